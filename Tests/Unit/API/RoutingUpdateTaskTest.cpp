#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <thread>

#include "Support/FacadeFixture.hpp"
#include "Support/MainLoop.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::PointPtr;
using KorvaniTest::TextBuilding;

/// Distances are plain ground distances here, so that drawn metres are metres.
class RoutingUpdateTaskTest : public KorvaniTest::FacadeFixture {
 protected:
  RoutingUpdateTaskTest() { config().setLevelHeight(0); }

  std::shared_ptr<RoutingUpdateTask> handle() const { return deliveries().back().update; }
  PointPtr at(double column) const { return building.position(0, column, 0); }

  const TextBuilding building{"A---------B---------C", 5};
};

TEST_F(RoutingUpdateTaskTest, SaysThatThePositionOfAnIdleTaskIsTaken) {
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("C")});
  EXPECT_TRUE(handle()->updateStartPoint(at(3)));
  EXPECT_TRUE(task->running());
}

TEST_F(RoutingUpdateTaskTest, SaysThatThePositionOfAWorkingTaskIsDropped) {
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("C")});
  handle()->updateStartPoint(at(3));
  const auto present = task->point();
  EXPECT_FALSE(handle()->updateStartPoint(at(4), [] { ADD_FAILURE() << "not taken"; }));
  EXPECT_EQ(task->point(), present);
}

TEST_F(RoutingUpdateTaskTest, SaysThatAPositionAfterTheArrivalIsDropped) {
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("B")});
  const auto last = handle();
  last->updateStartPoint(at(10));
  EXPECT_FALSE(last->updateStartPoint(at(9))) << "it works, and is about to arrive";
  pump();
  ASSERT_TRUE(deliveries().back().finished);
  EXPECT_FALSE(last->updateStartPoint(at(9), [] { ADD_FAILURE() << "not taken"; }));
}

TEST_F(RoutingUpdateTaskTest, StandsPositionsThatAreNotOnEarth) {
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("C")});
  const double infinity = std::numeric_limits<double>::infinity();
  const double nothing = std::numeric_limits<double>::quiet_NaN();
  for (const CLLocationCoordinate2D place :
       {CLLocationCoordinate2D{-200, infinity}, CLLocationCoordinate2D{nothing, nothing}}) {
    EXPECT_TRUE(handle()->updateStartPoint(std::make_shared<KRVNavPoint>(place, 0)));
    pump();
    EXPECT_FALSE(deliveries().back().finished);
  }
  EXPECT_TRUE(handle()->updateStartPoint(at(3)));
  pump();
  ASSERT_TRUE(lastRoute());
  EXPECT_EQ(lastRoute()->steps().back().end()->identifier(), building.point("C")->identifier());
}

TEST_F(RoutingUpdateTaskTest, TellsOfATakenPositionBeforeAnythingIsDoneWithIt) {
  provide(building.graph());
  const auto task = guide(building.point("A"), {building.point("C")});
  const auto position = at(3);
  int told = 0;
  EXPECT_TRUE(handle()->updateStartPoint(position, [&] {
    ++told;
    EXPECT_TRUE(task->running()) << "the task has been claimed";
    EXPECT_EQ(task->point(), position);
    pump();
    EXPECT_EQ(deliveries().size(), 1U) << "no work has been started";
  }));
  EXPECT_EQ(told, 1);
  pump();
  EXPECT_EQ(deliveries().size(), 2U);
}

TEST_F(RoutingUpdateTaskTest, TakesAPositionThatWaitsForAGraph) {
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  const RoutingUpdateTask update(task);
  bool told = false;
  EXPECT_TRUE(update.updateStartPoint(at(3), [&] { told = true; }));
  EXPECT_TRUE(told);
  EXPECT_FALSE(task->running());
  provide(building.graph());
  pump();
  EXPECT_EQ(building.names(lastRoute()->points()), "?BC");
}

TEST_F(RoutingUpdateTaskTest, KnowsItsTaskAsLongAsThereIsOne) {
  provide(building.graph());
  auto task = guide(building.point("A"), {building.point("C")});
  const auto update = handle();
  EXPECT_EQ(update->routingTask(), task);
  navigation().removeTask(task);
  task.reset();
  EXPECT_FALSE(update->routingTask());
  EXPECT_FALSE(update->updateStartPoint(at(3), [] { ADD_FAILURE() << "not taken"; }));
}

TEST_F(RoutingUpdateTaskTest, OfPositionsFromSeveralThreadsEachThatIsTakenIsWorkedOnce) {
  useThreads();
  provide(building.graph());
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  task->run();
  ASSERT_TRUE(KorvaniTest::pumpUntil([&] { return !deliveries().empty(); }));
  const auto update = handle();
  std::atomic<int> taken{0};
  std::atomic<int> told{0};
  std::atomic<int> working{3};
  const auto feed = [&] {
    for (int i = 0; i < 200; ++i) {
      if (update->updateStartPoint(at(1 + i * 0.01), [&] { ++told; })) ++taken;
      std::this_thread::yield();
    }
    --working;
  };
  std::thread first(feed);
  std::thread second(feed);
  std::thread third(feed);
  EXPECT_TRUE(KorvaniTest::pumpUntil([&] { return working == 0; }));
  first.join();
  second.join();
  third.join();
  KorvaniPlatform::joinGlobalQueue();
  pump();
  EXPECT_GT(taken, 0);
  EXPECT_EQ(told, taken);
  EXPECT_EQ(deliveries().size(), static_cast<std::size_t>(taken) + 1);
}

}  // namespace
}  // namespace KorvaniNavigation
