#include "Navigation/API/Tasks/ObstacleCheckTask.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Navigation/Obstacles/DefaultObstacleDenier.hpp"
#include "Navigation/Obstacles/StrengthBasedObstacleDenier.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/MainLoop.hpp"
#include "Support/PlacedBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::DefaultObstacleDenier;
using KorvaniNavigation::ObstacleCheckTask;
using KorvaniNavigation::ObstacleDenier;
using KorvaniNavigation::StrengthBasedObstacleDenier;
using KorvaniPlatform::isMainThread;

/// Gives back one and the same coordinate, and notes what it was asked.
class ProbeDenier : public ObstacleDenier {
 public:
  CLLocationCoordinate2D check(const KRVNavPoint& point) override {
    asked.push_back(point.coordinate());
    calledOnMainThread = isMainThread();
    if (duringCheck) duringCheck();
    return answer;
  }

  CLLocationCoordinate2D answer{1, 2};
  std::vector<CLLocationCoordinate2D> asked;
  std::function<void()> duringCheck;
  std::atomic<bool> calledOnMainThread{false};
};

class ObstacleCheckTaskTest : public FacadeFixture {
 protected:
  ObstacleCheckTaskTest() { building.wall(5, -900, 5, 900); }

  std::shared_ptr<ObstacleCheckTask> taskAt(double north, double east,
                                            const std::shared_ptr<ObstacleDenier>& denier,
                                            bool async = false) {
    return std::make_shared<ObstacleCheckTask>(bundle(), async, building.position(north, east),
                                               denier, handler());
  }

  ObstacleCheckTask::CompletionHandler handler() {
    return [this](CLLocationCoordinate2D shown) {
      results.push_back(shown);
      deliveredOnMainThread = isMainThread();
    };
  }

  PlacedBuilding building;
  const std::shared_ptr<ProbeDenier> probe = std::make_shared<ProbeDenier>();
  std::vector<CLLocationCoordinate2D> results;
  bool deliveredOnMainThread = false;
};

TEST_F(ObstacleCheckTaskTest, HasWhatItIsMadeOfAndNoResultAtFirst) {
  const auto point = building.position(1, 1);
  const ObstacleCheckTask task(bundle(), true, point, probe, {});
  EXPECT_EQ(task.point(), point);
  EXPECT_EQ(task.obstacleDenier(), probe);
  EXPECT_EQ(task.configDependents(), bundle());
  EXPECT_TRUE(task.async());
  EXPECT_FALSE(task.running());
  EXPECT_EQ(task.checkedPoint(), std::nullopt);
  EXPECT_FALSE(ObstacleCheckTask(bundle(), false, point, probe, {}).async());
  EXPECT_EQ(task.description(),
            "KorvaniNavigation.ObstacleCheckTask, identifier: " + task.identifier().uuidString());
}

TEST_F(ObstacleCheckTaskTest, HandsOverWhatItsDenierSaysBeforeASynchronousRunReturns) {
  provide(building.graph());
  const auto task = taskAt(3, 4, probe);
  task->run();
  EXPECT_EQ(probe->asked, std::vector{building.place(3, 4)});
  EXPECT_EQ(results, std::vector{probe->answer});
  EXPECT_EQ(task->checkedPoint(), probe->answer);
  EXPECT_FALSE(task->running());
}

TEST_F(ObstacleCheckTaskTest, AnAsynchronousOneChecksInTheBackgroundAndDeliversOnTheMainThread) {
  useThreads();
  provide(building.graph());
  const auto task = taskAt(3, 4, probe, true);
  task->run();
  ASSERT_TRUE(pumpUntil([&] { return !results.empty() && !task->running(); }));
  EXPECT_FALSE(probe->calledOnMainThread);
  EXPECT_TRUE(deliveredOnMainThread);
  EXPECT_EQ(results, std::vector{probe->answer});
  EXPECT_EQ(task->checkedPoint(), probe->answer);
}

TEST_F(ObstacleCheckTaskTest, AnAsynchronousOneDeliversNothingBeforeTheMainQueueRuns) {
  provide(building.graph());
  const auto task = taskAt(3, 4, probe, true);
  task->run();
  EXPECT_TRUE(task->running());
  EXPECT_TRUE(results.empty());
  pump();
  EXPECT_EQ(results.size(), 1U);
  EXPECT_FALSE(task->running());
}

TEST_F(ObstacleCheckTaskTest, ItsResultIsKnownWhenTheHandlerIsCalled) {
  provide(building.graph());
  std::optional<CLLocationCoordinate2D> seen;
  std::weak_ptr<ObstacleCheckTask> self;
  const auto task = std::make_shared<ObstacleCheckTask>(
      bundle(), true, building.position(3, 4), probe,
      [&](CLLocationCoordinate2D) { seen = self.lock()->checkedPoint(); });
  self = task;
  task->run();
  pump();
  EXPECT_EQ(seen, probe->answer);
}

TEST_F(ObstacleCheckTaskTest, WaitsForAGraphWhenItIsRunWithoutOne) {
  const auto task = taskAt(3, 4, probe);
  task->run();
  EXPECT_TRUE(probe->asked.empty());
  EXPECT_TRUE(results.empty());
  provide(building.graph());
  EXPECT_EQ(results.size(), 1U);
}

TEST_F(ObstacleCheckTaskTest, ChecksThePositionThatItHasWhenTheWorkIsDone) {
  provide(building.graph());
  const auto task = taskAt(3, 4, probe, true);
  task->run();
  task->updatePoint(building.position(7, 8));
  task->run();  // runs already
  pump();
  EXPECT_EQ(probe->asked, std::vector{building.place(7, 8)});
  EXPECT_EQ(results.size(), 1U);
}

TEST_F(ObstacleCheckTaskTest, APositionThatComesDuringTheCheckIsForTheNextRun) {
  provide(building.graph());
  const auto task = taskAt(3, 4, probe);
  probe->duringCheck = [&] { task->updatePoint(building.position(7, 8)); };
  task->run();
  EXPECT_EQ(task->point()->coordinate(), building.place(7, 8));
  task->run();
  EXPECT_EQ(probe->asked, (std::vector{building.place(3, 4), building.place(7, 8)}));
  EXPECT_EQ(results.size(), 2U);
}

TEST_F(ObstacleCheckTaskTest, RunAgainWithAnotherPositionItsDenierRemembersTheFirst) {
  provide(building.graph());
  const auto denier = std::make_shared<StrengthBasedObstacleDenier>(bundle());
  const auto task = taskAt(0, 0, denier, true);
  const auto identifier = task->identifier();
  for (int i = 1; i <= 3; ++i) {
    task->run();
    pump();
    task->updatePoint(building.position(0, i));
  }
  EXPECT_EQ(denier->numberOfPosUpdatesOnSameFloor(), 2);
  EXPECT_EQ(results,
            (std::vector{building.place(0, 0), building.place(0, 1), building.place(0, 2)}));
  EXPECT_EQ(task->identifier(), identifier);
}

TEST_F(ObstacleCheckTaskTest, ReusedWithTheDefaultDenierItHoldsJumpsThroughWallsBack) {
  provide(building.graph());
  const auto task = taskAt(0, 0, std::make_shared<DefaultObstacleDenier>(bundle()));
  for (int i = 0; i < 11; ++i) task->run();
  results.clear();
  for (int jump = 0; jump < 5; ++jump) {
    task->updatePoint(building.position(10, jump));
    task->run();
  }
  const auto held = building.place(0, 0);
  EXPECT_EQ(results, (std::vector{held, held, held, held, building.place(10, 4)}));
}

TEST_F(ObstacleCheckTaskTest, OfTwoTasksThroughAWallTheSecondGivesThePlaceOfTheFirst) {
  provide(building.graph());
  const auto denier = std::make_shared<DefaultObstacleDenier>(bundle());
  for (int i = 0; i < 10; ++i) taskAt(0, 0, denier)->run();
  results.clear();
  const auto first = taskAt(1, 2, denier, true);
  first->run();
  pump();
  ASSERT_EQ(denier->stickyCounter(), 5.0);
  const auto second = taskAt(10, 2, denier, true);
  second->run();
  pump();
  EXPECT_EQ(results, (std::vector{building.place(1, 2), building.place(1, 2)}));
  EXPECT_EQ(second->checkedPoint(), first->checkedPoint());
}

TEST_F(ObstacleCheckTaskTest, APositionOutsideEveryRegionComesBackUnchanged) {
  provide(std::make_shared<KRVNavGraph>());
  taskAt(3, 4, std::make_shared<StrengthBasedObstacleDenier>(bundle()))->run();
  taskAt(9, 4, std::make_shared<DefaultObstacleDenier>(bundle()))->run();
  EXPECT_EQ(results, (std::vector{building.place(3, 4), building.place(9, 4)}));
}

TEST_F(ObstacleCheckTaskTest, ATaskThatIsReleasedBeforeItDeliversNeverCallsItsHandler) {
  provide(building.graph());
  auto task = taskAt(3, 4, probe, true);
  const std::weak_ptr<ObstacleCheckTask> weak = task;
  probe->duringCheck = [] { navigation().cancelAllTasks(); };
  task->run();
  task.reset();
  EXPECT_FALSE(weak.expired()) << "the facade keeps it";
  pump();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(probe->asked.size(), 1U);
  EXPECT_TRUE(results.empty());
}

TEST_F(ObstacleCheckTaskTest, IsLetGoByTheFacadeWhenItIsDone) {
  provide(building.graph());
  for (const bool async : {false, true}) {
    auto task = taskAt(3, 4, probe, async);
    const std::weak_ptr<ObstacleCheckTask> weak = task;
    task->run();
    task.reset();
    pump();
    EXPECT_TRUE(weak.expired());
  }
  EXPECT_EQ(results.size(), 2U);
}

TEST_F(ObstacleCheckTaskTest, NeedsNoHandler) {
  provide(building.graph());
  const auto task =
      std::make_shared<ObstacleCheckTask>(bundle(), false, building.position(3, 4), probe, nullptr);
  task->run();
  EXPECT_EQ(task->checkedPoint(), probe->answer);
}

TEST_F(ObstacleCheckTaskTest, KeepsItsDenierAlive) {
  provide(building.graph());
  auto denier = std::make_shared<ProbeDenier>();
  const std::weak_ptr<ProbeDenier> weak = denier;
  auto task = taskAt(3, 4, denier);
  denier.reset();
  task->run();
  EXPECT_EQ(results.size(), 1U);
  task.reset();
  EXPECT_TRUE(weak.expired());
}

class ObstacleCheckFactoryTest : public ObstacleCheckTaskTest {
 protected:
  static std::shared_ptr<StrengthBasedObstacleDenier> denierOf(const ObstacleCheckTask& task) {
    return std::dynamic_pointer_cast<StrengthBasedObstacleDenier>(task.obstacleDenier());
  }

  /// That a task is fresh, and what the arguments say.
  void expectMade(const std::shared_ptr<ObstacleCheckTask>& task, bool async,
                  const std::shared_ptr<ConfigDependents>& configuration) const {
    ASSERT_NE(task, nullptr);
    EXPECT_EQ(task->async(), async);
    EXPECT_EQ(task->configDependents(), configuration);
    EXPECT_EQ(task->point(), position);
    EXPECT_FALSE(task->running());
    EXPECT_EQ(task->checkedPoint(), std::nullopt);
    const auto denier = denierOf(*task);
    ASSERT_NE(denier, nullptr);
    EXPECT_EQ(denier->percentage(), std::nullopt);
    EXPECT_EQ(denier->lastIndoorLocation(), nullptr);
  }

  const PointPtr position = building.position(3, 4);
};

TEST_F(ObstacleCheckFactoryTest, WithoutFlagMakesAnAsynchronousTaskOnTheMainConfiguration) {
  expectMade(navigation().obstacleCheckTask(position, handler()), true, bundle());
}

TEST_F(ObstacleCheckFactoryTest, WithAFlagMakesSuchATaskOnTheMainConfiguration) {
  expectMade(navigation().obstacleCheckTask(true, position, handler()), true, bundle());
  expectMade(navigation().obstacleCheckTask(false, position, handler()), false, bundle());
}

TEST_F(ObstacleCheckFactoryTest, WithANameMakesATaskOnThatConfiguration) {
  navigation().addConfig("second");
  const auto second = *navigation().navigationConfigs().find("second");
  ASSERT_NE(second, bundle());
  for (const bool async : {false, true}) {
    expectMade(navigation().obstacleCheckTask(async, position, "second", handler()), async, second);
    expectMade(navigation().obstacleCheckTask(async, position, "main", handler()), async, bundle());
  }
}

TEST_F(ObstacleCheckFactoryTest, WithAnUnknownNameMakesNoTask) {
  for (const bool async : {false, true}) {
    EXPECT_EQ(navigation().obstacleCheckTask(async, position, "nobody", handler()), nullptr);
    EXPECT_EQ(navigation().obstacleCheckTask(async, position, "", handler()), nullptr);
  }
}

TEST_F(ObstacleCheckFactoryTest, GivesEveryTaskADenierOfItsOwn) {
  provide(building.graph());
  const auto one = navigation().obstacleCheckTask(false, position, handler());
  const auto other = navigation().obstacleCheckTask(false, position, handler());
  EXPECT_NE(one->obstacleDenier(), other->obstacleDenier());
  one->run();
  one->run();
  EXPECT_EQ(denierOf(*one)->numberOfPosUpdatesOnSameFloor(), 1);
  EXPECT_EQ(denierOf(*other)->lastIndoorLocation(), nullptr);
}

TEST_F(ObstacleCheckFactoryTest, LeavesTheActiveRoutingTaskAlone) {
  provide(building.graph());
  const auto active = navigation().routingTask(position, {building.position(9, 9)}, recorder());
  navigation().obstacleCheckTask(false, position, handler())->run();
  EXPECT_EQ(navigation().activeRoutingTask(), active);
}

TEST_F(ObstacleCheckFactoryTest, ItsTasksDeliverEveryPositionAsItIs) {
  provide(building.graph());
  const auto task = navigation().obstacleCheckTask(position, handler());
  for (const double north : {3.0, 10.0, 3.0, 10.0}) {
    task->updatePoint(building.position(north, 4));
    task->run();
    pump();
    ASSERT_FALSE(results.empty());
    EXPECT_EQ(results.back(), building.place(north, 4));
  }
  EXPECT_EQ(results.size(), 4U);
  EXPECT_EQ(denierOf(*task)->percentage(), 12.0F);
}

TEST_F(ObstacleCheckFactoryTest, ATaskMadeBeforeTheGraphChecksOnceThereIsOne) {
  const auto task = navigation().obstacleCheckTask(false, position, handler());
  task->run();
  EXPECT_TRUE(results.empty());
  provide(building.graph());
  EXPECT_EQ(results, std::vector{building.place(3, 4)});
  EXPECT_EQ(denierOf(*task)->lastRegion(), building.region(0));
}

}  // namespace
}  // namespace KorvaniTest
