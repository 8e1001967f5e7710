#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/MainLoop.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniPlatform::isMainThread;
using KorvaniTest::PointPtr;
using KorvaniTest::pumpUntil;
using KorvaniTest::TextBuilding;

class SnappingTaskThreadsTest : public KorvaniTest::FlatFacadeFixture {
 protected:
  SnappingTaskThreadsTest() {
    useThreads();
    provide(building.graph());
  }

  bool waitForCalls(std::size_t count) {
    return pumpUntil([&] { return deliveries().size() >= count; });
  }

  /// Does all work that is left, and delivers it.
  static void settle() {
    KorvaniPlatform::joinGlobalQueue();
    pump();
  }

  /// A position on the way from A to F, the farther the higher the number.
  PointPtr onTheWay(int number) const { return building.position(0, number % 12, 0.1); }

  TextBuilding building{R"(
A-----B-----C
|     |     |
D-----E-----F)",
                        5};
};

/// Counts those that end on another thread than the main one.
class EndsOnMainThread {
 public:
  explicit EndsOnMainThread(std::atomic<int>& elsewhere) : elsewhere_(elsewhere) {}
  EndsOnMainThread(const EndsOnMainThread&) = delete;
  EndsOnMainThread& operator=(const EndsOnMainThread&) = delete;
  ~EndsOnMainThread() {
    if (!isMainThread()) ++elsewhere_;
  }

 private:
  std::atomic<int>& elsewhere_;
};

TEST_F(SnappingTaskThreadsTest, EveryPositionOfTwoThreadsIsDeliveredOnceOnTheMainThread) {
  auto routing = navigation().routingTask(building.point("A"), {building.point("F")}, recorder());
  routing->run();
  ASSERT_TRUE(waitForCalls(1));
  const auto update = deliveries().back().update;
  constexpr int kEach = 200;
  std::atomic<int> wrongThread{0};
  std::vector<int> calls(2 * kEach, 0);
  const auto walk = [&](int first) {
    for (int i = first; i < 2 * kEach; i += 2) {
      navigation()
          .snappingTask(onTheWay(i),
                        [&, i](CLLocationCoordinate2D) {
                          if (!isMainThread()) ++wrongThread;
                          ++calls[static_cast<std::size_t>(i)];
                        })
          ->run();
      update->updateStartPoint(onTheWay(i));
      std::this_thread::yield();
    }
  };
  std::thread one(walk, 0);
  std::thread other(walk, 1);
  EXPECT_TRUE(pumpUntil([&] {
    return std::all_of(calls.begin(), calls.end(), [](int count) { return count > 0; });
  }));
  one.join();
  other.join();
  settle();
  EXPECT_EQ(calls, std::vector<int>(2 * kEach, 1));
  EXPECT_EQ(wrongThread, 0);
  EXPECT_FALSE(routing->running());
}

TEST_F(SnappingTaskThreadsTest, WhatHandlersHaveCapturedEndsOnTheMainThread) {
  std::atomic<int> elsewhere{0};
  for (int round = 0; round < 100; ++round) {
    auto mine = std::make_shared<EndsOnMainThread>(elsewhere);
    auto routing = navigation().routingTask(
        building.point("A"), {building.point("F")},
        [mine](const auto&, const auto&, bool, const auto&) { static_cast<void>(mine); });
    mine.reset();
    routing->run();
    for (int i = 0; i < 4; ++i) {
      auto captured = std::make_shared<EndsOnMainThread>(elsewhere);
      navigation().snappingTask(onTheWay(i), [captured](CLLocationCoordinate2D) {})->run();
    }
    navigation().removeTask(routing);
    routing.reset();
    if (round % 7 == 0) settle();
  }
  settle();
  EXPECT_EQ(elsewhere, 0);
}

TEST_F(SnappingTaskThreadsTest, ARouteThatIsCancelledWhileSnappingGoesOnStaysSilent) {
  for (int round = 0; round < 100; ++round) {
    int calls = 0;
    auto routing = navigation().routingTask(
        building.point("A"), {building.point("F")},
        [&calls](const auto&, const auto&, bool, const auto&) { ++calls; });
    for (int i = 0; i < 3; ++i) navigation().snappingTask(onTheWay(i), nullptr)->run();
    routing->run();
    if (round % 2 == 0) std::this_thread::yield();
    navigation().removeTask(routing);
    routing.reset();
    settle();
    EXPECT_EQ(calls, 0);
  }
}

TEST_F(SnappingTaskThreadsTest, ASynchronousTaskOfAnyThreadLeavesTheRouteFreeForTheNextPosition) {
  const auto routing =
      navigation().routingTask(building.point("A"), {building.point("F")}, recorder());
  routing->run();
  ASSERT_TRUE(waitForCalls(1));
  const auto update = deliveries().back().update;
  std::thread positions([&] {
    navigation().snappingTask(false, onTheWay(2), nullptr)->run();
    EXPECT_FALSE(routing->running());
    update->updateStartPoint(onTheWay(2));
  });
  positions.join();
  EXPECT_TRUE(waitForCalls(2)) << "the position was not dropped";
}

}  // namespace
}  // namespace KorvaniNavigation
