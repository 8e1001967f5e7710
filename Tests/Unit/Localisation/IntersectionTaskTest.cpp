#include "Navigation/API/Tasks/IntersectionTask.hpp"

#include <gtest/gtest.h>

#include <thread>

#include "MapperFixture.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::IntersectionTask;

/// What a handler was given, call by call.
using Results = std::vector<std::shared_ptr<Intersection>>;

/// A task whose work can be called alone, without the rules of `run()`.
class BareTask : public IntersectionTask {
 public:
  using IntersectionTask::execute;
  using IntersectionTask::IntersectionTask;
};

class IntersectionTaskTest : public FacadeFixture {
 protected:
  IntersectionTaskTest() {
    a = building.node(0, 0);
    b = building.node(0, 40);
    building.join(a, b);
  }

  template <class T = IntersectionTask>
  std::shared_ptr<T> taskAt(double north, double east) {
    return std::make_shared<T>(
        bundle(), building.position(north, east),
        [this](const auto& place) { results.push_back(place); }, true);
  }

  PlacedBuilding building;
  PointPtr a;
  PointPtr b;
  Results results;
};

using IntersectionTaskDeathTest = IntersectionTaskTest;

TEST_F(IntersectionTaskTest, IsSynchronousAndHasNothingFoundAtFirst) {
  const auto position = at(kOrigin);
  const IntersectionTask original(bundle(), position, {}, true);
  EXPECT_FALSE(original.async());
  EXPECT_FALSE(original.running());
  EXPECT_TRUE(original.onOriginalGraph());
  EXPECT_EQ(original.navigationPoint(), position);
  EXPECT_EQ(original.obstacleDetector(), nullptr);
  EXPECT_EQ(original.intersection(), nullptr);
  EXPECT_FALSE(IntersectionTask(bundle(), position, {}, false).onOriginalGraph());
}

TEST_F(IntersectionTaskTest, HandsItsIntersectionOverBeforeRunReturns) {
  provide(building.graph());
  const auto task = taskAt(3, 4);
  task->run();
  ASSERT_EQ(results.size(), 1U);
  EXPECT_TRUE(isOnEdge(results[0], a, b));
  EXPECT_EQ(task->intersection(), results[0]);
  EXPECT_FALSE(task->running());
}

TEST_F(IntersectionTaskTest, HoldsTheWallsOfThePositionsRegionAfterItsRun) {
  const auto wall = building.wall(50, 50, 60, 60);
  provide(building.graph());
  const auto task = taskAt(3, 4);
  task->run();
  ASSERT_NE(task->obstacleDetector(), nullptr);
  EXPECT_EQ(task->obstacleDetector()->obstacles(), (std::vector{wall}));
}

TEST_F(IntersectionTaskTest, HandsOverNothingWhenAllNodesAreBehindWalls) {
  building.wall(1, -50, 1, 50);
  provide(building.graph());
  taskAt(3, 4)->run();
  EXPECT_EQ(results, Results{nullptr});
}

TEST_F(IntersectionTaskTest, HandsOverNothingWhenTheGraphHasNoRegion) {
  provide(std::make_shared<KRVNavGraph>());
  taskAt(3, 4)->run();
  EXPECT_EQ(results, Results{nullptr});
}

TEST_F(IntersectionTaskTest, WaitsForAGraphWhenItIsRunWithoutOne) {
  const auto task = taskAt(3, 4);
  task->run();
  EXPECT_TRUE(results.empty());
  provide(building.graph());
  ASSERT_EQ(results.size(), 1U);
  EXPECT_TRUE(isOnEdge(results[0], a, b));
}

TEST_F(IntersectionTaskTest, HandsOverNothingWhenItsWorkIsDoneWithoutAGraph) {
  const auto task = taskAt<BareTask>(3, 4);
  task->execute();
  EXPECT_EQ(results, Results{nullptr});
}

TEST_F(IntersectionTaskTest, DoesNothingWithoutAGraphWhenItMustNotWait) {
  const auto task = taskAt(3, 4);
  task->runUnlessGraphIsMissing();
  EXPECT_EQ(task->intersection(), nullptr);
  provide(building.graph());
  EXPECT_TRUE(results.empty());
  task->runUnlessGraphIsMissing();
  EXPECT_EQ(results.size(), 1U);
}

TEST_F(IntersectionTaskTest, IsLetGoByTheFacadeWhenItIsDone) {
  provide(building.graph());
  auto task = taskAt(3, 4);
  const std::weak_ptr<IntersectionTask> weak = task;
  task->run();
  task.reset();
  EXPECT_TRUE(weak.expired());
}

TEST_F(IntersectionTaskTest, NeedsNoHandler) {
  provide(building.graph());
  const auto task =
      std::make_shared<IntersectionTask>(bundle(), building.position(3, 4), nullptr, true);
  task->run();
  EXPECT_TRUE(isOnEdge(task->intersection(), a, b));
}

TEST_F(IntersectionTaskTest, MayStartAnotherOneFromItsHandler) {
  provide(building.graph());
  std::shared_ptr<Intersection> second;
  const auto task = std::make_shared<IntersectionTask>(
      bundle(), building.position(3, 4),
      [&](const auto&) {
        taskAt(-1, -1)->run();
        second = results.empty() ? nullptr : results.back();
      },
      true);
  task->run();
  EXPECT_TRUE(isNode(second, a));
}

TEST_F(IntersectionTaskTest, MapsOtherPositionsWithoutTouchingItsResult) {
  provide(building.graph());
  const auto task = taskAt(3, 4);
  task->run();
  EXPECT_TRUE(isNode(task->intersect(*building.position(1, -2)), a));
  EXPECT_TRUE(isNode(task->intersect(*building.position(1, 45), b), b));
  const auto foot = task->findIntersectionOnSegmentBetween(a, at(building.place(10, 10)),
                                                           building.place(2, 6), false);
  ASSERT_NE(foot, nullptr);
  EXPECT_NEAR(metresBetween(foot->node()->coordinate(), building.place(4, 4)), 0, kFootPrecision);
  EXPECT_TRUE(isOnEdge(task->intersection(), a, b));
  EXPECT_EQ(results.size(), 1U);
}

TEST_F(IntersectionTaskTest, WorksOnTheConfigurationsOwnRegions) {
  provide(building.graph());
  regionFinder()->setRegions({});
  taskAt(3, 4)->run();
  EXPECT_EQ(results, Results{nullptr});
}

TEST_F(IntersectionTaskTest, FindsTheSameOnManyThreadsAtOnce) {
  provide(building.graph());
  constexpr int kThreads = 4;
  std::vector<std::shared_ptr<IntersectionTask>> tasks;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    tasks.push_back(
        std::make_shared<IntersectionTask>(bundle(), building.position(3, 4), nullptr, true));
    threads.emplace_back([task = tasks.back()] {
      for (int run = 0; run < 50; ++run) task->run();
    });
  }
  for (auto& thread : threads) thread.join();
  for (const auto& task : tasks) {
    ASSERT_TRUE(isOnEdge(task->intersection(), a, b));
    EXPECT_EQ(task->intersection()->distance(), tasks[0]->intersection()->distance());
  }
}

TEST_F(IntersectionTaskDeathTest, NeedsItsConfiguration) {
  provide(building.graph());
  auto other = std::make_shared<ConfigDependents>("other", std::make_shared<Config>());
  const auto task =
      std::make_shared<IntersectionTask>(other, building.position(3, 4), nullptr, true);
  other.reset();
  EXPECT_DEATH(task->run(), "fatal error: .*configuration");
}

}  // namespace
}  // namespace KorvaniTest
