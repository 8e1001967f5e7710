#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <thread>

#include "Integration/LiveMemory.hpp"
#include "Navigation/API/Tasks/IntersectionTask.hpp"
#include "Navigation/API/Tasks/ObstacleCheckTask.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/MainLoop.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::IntersectionTask;
using KorvaniNavigation::ObstacleCheckTask;

constexpr int kPositions = 20'000;

/// A long day of an app: positions without end, given to tasks of every kind, while one route after
/// the other is followed to its destination.
class Soak : public FlatFacadeFixture {
 protected:
  Soak() {
    building.connect("G", "K", {.type = "lift"});
    provide(building.graph());
    startGuiding();
  }

  void TearDown() override {
    routing_.reset();
    FlatFacadeFixture::TearDown();
  }

  /// A person on the way from A by C to I and there for a while, farther with the number, and
  /// sometimes one level off.
  PointPtr position(int number) const {
    const int step = number / 40 % 24;
    const std::int64_t level = number % 97 == 0 ? 1 : 0;
    return building.position(level, std::min(step, 12), std::clamp(step - 12, 0, 4));
  }

  /// Leads from A to the nearer of K and I; another such task follows when this one has arrived.
  void startGuiding() {
    ++routesStarted;
    routing_ = navigation().routingTask(
        building.point("A"), {building.point("K"), building.point("I")},
        [this](const auto& update, const auto&, bool finished, const auto&) {
          if (!finished) return update_.store(update);
          ++arrivals;
          startGuiding();
        });
    routing_->setDirections(true);
    routing_->run();
  }

  /// What an app does with one position. Any thread.
  void give(int number, ObstacleCheckTask& check) {
    const PointPtr point = position(number);
    ++snapsStarted;
    ++open;
    navigation()
        .snappingTask(number % 5 != 0, point,
                      [this](auto) {
                        ++snapsDelivered;
                        --open;
                      })
        ->run();
    if (const auto update = update_.load()) update->updateStartPoint(point);
    check.updatePoint(point);
    check.run();
    int mapped = 0;
    const auto task = std::make_shared<IntersectionTask>(
        bundle(), point, [&mapped](const auto&) { ++mapped; }, number % 2 == 0);
    task->run();
    if (mapped != 1) ++mappedWrongly;
    if (number % 1000 == 0) changeDestinations(number);
  }

  std::shared_ptr<ObstacleCheckTask> newCheck() {
    return navigation().obstacleCheckTask(building.point("A"), [this](auto) { ++checksDelivered; });
  }

  /// Does all that is left, and gives back what ended with it.
  static void settle() {
    KorvaniPlatform::joinGlobalQueue();
    pump();
  }

  /// Walks one more route to its end, with nobody who changes destinations. (How many routes have
  /// arrived before is up to the machine: positions are dropped while the task is running.)
  void walkToTheEnd() {
    const int before = arrivals;
    ++routesStopped;
    navigation().removeTask(routing_);
    startGuiding();
    const auto check = newCheck();
    int number = 1;
    EXPECT_TRUE(pumpUntil([&] {
      if (arrivals > before) return true;
      if (open > 0) return false;
      give(number, *check);
      number = (number + 10) % 960;
      return false;
    }));
  }

  void expectEveryCompletionOnce() const {
    EXPECT_EQ(snapsDelivered, snapsStarted);
    EXPECT_EQ(mappedWrongly, 0);
    EXPECT_GT(checksDelivered, 0);
    EXPECT_EQ(arrivals, routesStarted - routesStopped - 1)
        << "each route but the last and the stopped ones has arrived, once";
    EXPECT_GE(arrivals, 2);
  }

  TextBuilding building = TextBuilding(3)
                              .addLevel(0, R"(
A-----B-----C
|     |   # |
D-----E-----F
|     | #   |
G-----H-----I)")
                              .addLevel(1, R"(



      #
K-----L      )");
  std::atomic<int> open{0};
  std::atomic<int> snapsStarted{0};
  std::atomic<int> snapsDelivered{0};
  std::atomic<int> checksDelivered{0};
  std::atomic<int> mappedWrongly{0};
  std::atomic<int> routesStarted{0};
  std::atomic<int> routesStopped{0};
  std::atomic<int> arrivals{0};

 private:
  void changeDestinations(int number) {
    const auto task = navigation().activeRoutingTask();
    if (task) task->updateDestinations({building.point(number % 2000 == 0 ? "L" : "K")});
  }

  std::shared_ptr<KorvaniNavigation::RoutingTask> routing_;
  KorvaniCommon::Guarded<std::shared_ptr<KorvaniNavigation::RoutingUpdateTask>> update_;
};

/// Blocks that may differ between two quiet moments: routes of other lengths, queues that grow in
/// steps. One block lost with every position would be 18,000.
constexpr std::int64_t kSlack = 500;

TEST_F(Soak, TwentyThousandPositionsLeaveMemoryFlatAndEachIsAnsweredOnce) {
  const auto check = newCheck();
  std::int64_t blocksEarly = 0;
  for (int number = 0; number < kPositions; ++number) {
    give(number, *check);
    pump();
    if (number == kPositions / 10) blocksEarly = liveBlocks();
  }
  EXPECT_LT(std::abs(liveBlocks() - blocksEarly), kSlack);
  expectEveryCompletionOnce();
  EXPECT_EQ(checksDelivered, kPositions);
}

TEST_F(Soak, PositionsOfTwoThreadsLeaveMemoryFlatAndEachIsAnsweredOnce) {
  useThreads();
  std::atomic<int> next{0};
  const auto walkInTwoThreads = [&](int to) {
    std::atomic<int> done{0};
    const auto walk = [&] {
      const auto check = newCheck();
      for (int number = next++; number < to; number = next++) {
        while (open > 8) std::this_thread::yield();
        give(number, *check);
      }
      ++done;
    };
    std::thread one(walk);
    std::thread other(walk);
    EXPECT_TRUE(pumpUntil([&] { return done == 2; }, std::chrono::seconds(280)));
    one.join();
    other.join();
    walkToTheEnd();
    settle();
  };
  walkInTwoThreads(kPositions / 10);
  const std::int64_t blocksEarly = liveBlocks();
  walkInTwoThreads(kPositions);
  EXPECT_LT(std::abs(liveBlocks() - blocksEarly), kSlack);
  expectEveryCompletionOnce();
}

}  // namespace
}  // namespace KorvaniTest
