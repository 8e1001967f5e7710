#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "Support/FacadeFixture.hpp"
#include "Support/MainLoop.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniPlatform::isMainThread;
using KorvaniTest::pumpUntil;
using KorvaniTest::TextBuilding;

/// What happens to a routing task that the host has stopped with `Navigation::removeTask`.
class StoppedRoutingTest : public KorvaniTest::FlatFacadeFixture {
 protected:
  StoppedRoutingTest() { provide(building.graph()); }

  /// Tells, when it ends, whether that was on the main thread.
  struct Captured {
    std::atomic<int>& endedElsewhere;
    explicit Captured(std::atomic<int>& count) : endedElsewhere(count) {}
    Captured(const Captured&) = delete;
    Captured& operator=(const Captured&) = delete;
    ~Captured() {
      if (!isMainThread()) ++endedElsewhere;
    }
  };

  const TextBuilding building{"A---------B---------C", 5};
};

TEST_F(StoppedRoutingTest, ItsHandlesDoNothingWhileTheHostStillHoldsIt) {
  const auto task = guide(building.point("A"), {building.point("C")});
  const auto update = deliveries().back().update;
  navigation().removeTask(task);
  EXPECT_FALSE(update->updateStartPoint(building.point("B")));
  pump();
  EXPECT_EQ(deliveries().size(), 1U);
  EXPECT_FALSE(task->running());
}

TEST_F(StoppedRoutingTest, TheWorkThatGoesOnIsNotDelivered) {
  const auto task = guide(building.point("A"), {building.point("C")});
  deliveries().back().update->updateStartPoint(building.point("B"));
  navigation().removeTask(task);
  pump();
  EXPECT_EQ(deliveries().size(), 1U);
  EXPECT_FALSE(task->running());
}

TEST_F(StoppedRoutingTest, AnArrivalIsNotAnnouncedAnyMore) {
  const auto task = guide(building.point("A"), {building.point("C")});
  deliveries().back().update->updateStartPoint(building.point("C"));
  navigation().removeTask(task);
  pump();
  EXPECT_EQ(deliveries().size(), 1U);
  EXPECT_FALSE(task->running());
}

TEST_F(StoppedRoutingTest, RunningItAgainHasTheFacadeKeepItAgain) {
  auto task = guide(building.point("A"), {building.point("C")});
  navigation().removeTask(task);
  task->run();
  const std::weak_ptr<RoutingTask> weak = task;
  task.reset();
  pump();
  EXPECT_EQ(deliveries().size(), 2U);
  EXPECT_FALSE(weak.expired());
}

TEST_F(StoppedRoutingTest, RunningItAgainBringsWhatItWasWorkingOn) {
  auto task = navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  task->run();
  navigation().removeTask(task);
  EXPECT_TRUE(task->run([] {}));
  pump();
  ASSERT_EQ(deliveries().size(), 1U);
  EXPECT_TRUE(deliveries().back().update->updateStartPoint(building.point("B")));
  const std::weak_ptr<RoutingTask> weak = task;
  task.reset();
  pump();
  EXPECT_EQ(deliveries().size(), 2U);
  EXPECT_FALSE(weak.expired()) << "the facade keeps it again";
}

TEST_F(StoppedRoutingTest, WhoIsStoppedWhileItSaysThatItRunsIsNotKept) {
  auto task = navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  EXPECT_TRUE(task->run([&] { navigation().removeTask(task); }));
  pump();
  EXPECT_TRUE(deliveries().empty());
  const std::weak_ptr<RoutingTask> weak = task;
  task.reset();
  EXPECT_TRUE(weak.expired());
}

TEST_F(StoppedRoutingTest, RemovingATaskThatWaitsForAGraphChangesNothing) {
  navigation().cancelAllTasks();
  navigation().addConfig("aside");
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("C")}, "aside", recorder());
  task->run();
  navigation().removeTask(task);
  provide(building.graph());
  pump();
  EXPECT_EQ(deliveries().size(), 1U);
}

TEST_F(StoppedRoutingTest, PositionsOfAnotherThreadNeitherBringItBackNorEndItThere) {
  useThreads();
  std::atomic<int> endedElsewhere{0};
  for (int round = 0; round < 300; ++round) {
    std::atomic<bool> stopped{false};
    std::atomic<int> callsAfterStop{0};
    KorvaniCommon::Guarded<std::shared_ptr<RoutingUpdateTask>> handle;
    auto captured = std::make_shared<Captured>(endedElsewhere);
    auto task =
        navigation().routingTask(building.point("A"), {building.point("C")},
                                 [&, captured](const auto& update, const auto&, bool, const auto&) {
                                   if (stopped) ++callsAfterStop;
                                   handle.store(update);
                                 });
    captured.reset();
    const std::weak_ptr<RoutingTask> weak = task;
    task->run();
    ASSERT_TRUE(pumpUntil([&] { return handle.load() != nullptr; }));
    std::atomic<bool> enough{false};
    std::thread feeder([&] {
      while (!enough) handle.load()->updateStartPoint(building.position(0, 4, 0));
    });
    for (int i = 0; i < round % 7; ++i) pump();
    navigation().removeTask(task);
    stopped = true;
    task.reset();
    enough = true;
    feeder.join();
    KorvaniPlatform::joinGlobalQueue();
    pump();
    EXPECT_EQ(callsAfterStop, 0);
    EXPECT_TRUE(weak.expired()) << "nobody keeps it";
  }
  EXPECT_EQ(endedElsewhere, 0);
}

}  // namespace
}  // namespace KorvaniNavigation
