#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <thread>

#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Platform/ManualClock.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/MainLoop.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniPlatform::isMainThread;
using KorvaniTest::PointPtr;
using KorvaniTest::pumpUntil;
using KorvaniTest::TextBuilding;

class RoutingTaskThreadsTest : public KorvaniTest::FacadeFixture {
 protected:
  RoutingTaskThreadsTest() { useThreads(); }

  bool waitForCalls(std::size_t count) {
    return pumpUntil([&] { return deliveries().size() >= count; });
  }
};

TextBuilding hall() {
  return TextBuilding(R"(
A-----B-----C
|     |     |
D-----E-----F
|     |     |
G-----H-----I)",
                      5);
}

TEST_F(RoutingTaskThreadsTest, FiftyTasksAtOnceEachPublishOnceOnTheMainThread) {
  const TextBuilding building = hall();
  provide(building.graph());
  std::vector<int> published(50, 0);
  std::vector<std::shared_ptr<RoutingTask>> tasks;
  std::atomic<int> wrongThread{0};
  for (std::size_t i = 0; i < published.size(); ++i) {
    tasks.push_back(
        navigation().routingTask(building.point("A"), {building.point(i % 2 == 0 ? "I" : "F")},
                                 [&, i](const auto&, const auto& route, bool, const auto&) {
                                   if (!isMainThread()) ++wrongThread;
                                   if (route) ++published[i];
                                 }));
  }
  for (const auto& task : tasks) task->run();
  ASSERT_TRUE(pumpUntil([&] {
    return std::all_of(published.begin(), published.end(), [](int count) { return count > 0; });
  }));
  KorvaniPlatform::joinGlobalQueue();
  pump();
  EXPECT_EQ(published, std::vector<int>(50, 1));
  EXPECT_EQ(wrongThread, 0);
}

TEST_F(RoutingTaskThreadsTest, PositionsFromTwoThreadsArriveOnce) {
  const TextBuilding building("A-------------------B", 5);
  provide(building.graph());
  for (int round = 0; round < 10; ++round) {
    std::atomic<int> arrivals{0};
    std::atomic<bool> arrived{false};
    KorvaniCommon::Guarded<std::shared_ptr<RoutingUpdateTask>> handle;
    auto task =
        navigation().routingTask(building.point("A"), {building.point("B")},
                                 [&](const auto& update, const auto&, bool finished, const auto&) {
                                   EXPECT_EQ(arrivals, 0) << "nothing comes after the last call";
                                   if (finished) {
                                     ++arrivals;
                                     arrived = true;
                                   } else {
                                     handle.store(update);
                                   }
                                 });
    task->setDirections(true);
    task->run();
    std::atomic<int> column{0};
    const auto walk = [&] {
      while (!arrived) {
        const int at = std::min(column++ / 8, 20);
        if (const auto update = handle.load())
          update->updateStartPoint(building.position(0, at, 0));
        std::this_thread::yield();
      }
    };
    std::thread one(walk);
    std::thread other(walk);
    EXPECT_TRUE(pumpUntil([&] { return arrived.load(); }));
    arrived = true;
    one.join();
    other.join();
    KorvaniPlatform::joinGlobalQueue();
    pump();
    EXPECT_EQ(arrivals, 1);
  }
}

TEST_F(RoutingTaskThreadsTest, DestinationsMayChangeWhileTheTaskRuns) {
  const TextBuilding building = hall();
  provide(building.graph());
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("I")}, recorder());
  task->run();
  ASSERT_TRUE(waitForCalls(1));
  const auto update = deliveries().back().update;
  std::atomic<bool> stop{false};
  std::thread changer([&] {
    for (int i = 0; !stop; ++i) {
      task->updateDestinations({building.point(i % 2 == 0 ? "F" : "I")});
      static_cast<void>(task->graphForRoute());
      static_cast<void>(task->possibleDestinationLocations());
      std::this_thread::yield();
    }
  });
  for (int i = 0; i < 50; ++i) {
    const auto before = deliveries().size();
    update->updateStartPoint(building.point(i % 3 == 0 ? "B" : "D"));
    ASSERT_TRUE(waitForCalls(before + 1));
    EXPECT_TRUE(lastRoute());
  }
  stop = true;
  changer.join();
  const Route route = *lastRoute();
  EXPECT_FALSE(route.steps().empty());
}

TEST_F(RoutingTaskThreadsTest, CancellingWhileTheTaskRunsNeitherCrashesNorDeliversTwice) {
  const TextBuilding building = hall();
  for (int round = 0; round < 30; ++round) {
    provide(building.graph());
    const auto before = deliveries().size();
    auto task = navigation().routingTask(building.point("A"), {building.point("I")}, recorder());
    task->run();
    if (round % 3 == 0) std::this_thread::yield();
    navigation().cancelAllTasks();
    navigation().provideGraph(building.graph());
    ASSERT_TRUE(pumpUntil([&] { return !task->running() && deliveries().size() > before; }));
    KorvaniPlatform::joinGlobalQueue();
    pump();
    EXPECT_EQ(deliveries().size(), before + 1);
  }
}

/// Nodes on a line in the yard, each joined with every later one, the more cheaply the more
/// stops there are on the way: the search improves nearly every label in every wave and takes
/// far longer than any test waits. An edge to an equal point that is no node has it made object by
/// object, and not in arrays, which would be soon done.
void addEndlessSearch(const TextBuilding& building, const PointPtr& from, const PointPtr& to,
                      int nodes = 700) {
  std::vector<PointPtr> line{from};
  for (int i = 1; i < nodes; ++i) {
    const auto place = building.coordinate(0, 0, 40 + i);
    line.push_back(KorvaniTest::at(place, 0, 1000 + i));
    building.region(0)->addNode(line.back());
  }
  line.push_back(to);
  for (std::size_t i = 0; i < line.size(); ++i) {
    for (std::size_t j = i + 1; j < line.size(); ++j) {
      const double length = std::pow(static_cast<double>(j - i), 1.5);
      building.graph()->addEdge(std::make_shared<KRVNavEdge>(line[i], line[j], length, 1.0, true),
                                *line[i], *line[j]);
    }
  }
  const auto twin = KorvaniTest::at(from->coordinate(), 0, from->identifier());
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(from, twin, 1, 1.0, true), *from, *twin);
}

TEST_F(RoutingTaskThreadsTest, ASearchThatTakesTooLongIsGivenUpAndTheOlderRouteStays) {
  const char* drawing = R"(
A----------B

############

D           )";
  const TextBuilding quick(drawing, 5);
  const TextBuilding slow(drawing, 5);
  addEndlessSearch(slow, slow.point("D"), slow.point("B"));
  const auto clock = std::make_shared<KorvaniPlatform::ManualClock>();
  KorvaniPlatform::setClock(clock);
  provide(quick.graph());
  const auto task = navigation().routingTask(quick.point("A"), {quick.point("B")}, recorder());
  task->run();
  ASSERT_TRUE(waitForCalls(1));
  provide(slow.graph());
  deliveries().back().update->updateStartPoint(slow.point("D"));
  // Seconds pass only here: the limit is reached while the search goes on, whatever the machine.
  ASSERT_TRUE(pumpUntil([&] {
    clock->advance(std::chrono::seconds(1));
    return deliveries().size() == 2;
  }));
  ASSERT_TRUE(lastRoute());
  EXPECT_EQ(quick.names(lastRoute()->points()), "AB");
  EXPECT_GE(clock->uptime(), std::chrono::seconds(10));
  EXPECT_FALSE(task->running());
  KorvaniPlatform::setClock(nullptr);
}

TEST_F(RoutingTaskThreadsTest, AFirstSearchTakesAsLongAsItTakes) {
  const TextBuilding slow(R"(
A----------B

############

D           )",
                          5);
  addEndlessSearch(slow, slow.point("D"), slow.point("B"), 500);
  const auto clock = std::make_shared<KorvaniPlatform::ManualClock>();
  KorvaniPlatform::setClock(clock);
  provide(slow.graph());
  const auto task = navigation().routingTask(slow.point("D"), {slow.point("B")}, recorder());
  task->run();
  ASSERT_TRUE(pumpUntil([&] {
    clock->advance(std::chrono::seconds(1));
    return !deliveries().empty();
  }));
  EXPECT_TRUE(lastRoute()) << "nothing interrupts it, though the clock has gone far";
  EXPECT_GE(clock->uptime(), std::chrono::seconds(10));
  KorvaniPlatform::setClock(nullptr);
}

TEST_F(RoutingTaskThreadsTest, ARunBetweenArrivalAndLastCallDoesNotMakeASecondLastCall) {
  const TextBuilding building("A-------------------B", 5);
  provide(building.graph());
  for (int round = 0; round < 50; ++round) {
    const auto before = deliveries().size();
    const auto task =
        navigation().routingTask(building.position(0, 19.9, 0), {building.point("B")}, recorder());
    task->run();
    KorvaniPlatform::joinGlobalQueue();  // it has arrived, and not said so yet
    EXPECT_TRUE(task->running());
    task->run();
    KorvaniPlatform::joinGlobalQueue();
    pump();
    ASSERT_EQ(deliveries().size(), before + 1);
    EXPECT_TRUE(deliveries().back().finished);
  }
}

}  // namespace
}  // namespace KorvaniNavigation
