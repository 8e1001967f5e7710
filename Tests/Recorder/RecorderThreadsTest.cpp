#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <thread>

#include "Recorder/RecorderFixture.hpp"
#include "Support/MainLoop.hpp"
#include "Support/TextBuilding.hpp"
#include "Trace/TraceReader.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::TextBuilding;

class RecorderThreads : public KorvaniTest::RecorderFixture {
 protected:
  RecorderThreads() { useThreads(); }

  static void together(int threads, const std::function<void(int)>& work) {
    std::vector<std::thread> started;
    for (int i = 0; i < threads; ++i) started.emplace_back(work, i);
    for (auto& thread : started) thread.join();
  }

  /// How many lines of each kind the trace has. All of them have to be readable.
  std::map<std::size_t, int> kinds() const {
    std::map<std::size_t, int> counts;
    const auto path = recording.files().back().trace;
    auto stream = KorvaniTools::openTrace(path);
    KorvaniTools::TraceReader reader(stream, path.string());
    while (const auto line = reader.next()) ++counts[line->operation.index()];
    return counts;
  }

  template <class Operation>
  int count() const {
    return kinds()[KorvaniTools::TraceOperation(Operation()).index()];
  }

  const TextBuilding building{"A---------B---------C", 5};
};

TEST_F(RecorderThreads, EveryLineIsWhole) {
  record(building.graph());
  together(4, [&](int thread) {
    for (int i = 0; i < 50; ++i) {
      config().setWalkingSpeed(1 + thread + i * 0.01);
      recording.run(std::make_shared<IntersectionTask>(
          bundle(), building.position(0, i * 0.1, 0), [](const auto&) {}, true));
    }
  });
  EXPECT_EQ(count<KorvaniTools::IntersectOperation>(), 200);
  EXPECT_TRUE(recording.problems().empty());
}

TEST_F(RecorderThreads, APositionIsWrittenForEachThatIsTaken) {
  record(building.graph());
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  recording.run(task);
  ASSERT_TRUE(KorvaniTest::pumpUntil([&] { return !deliveries().empty(); }));
  const auto update = deliveries().back().update;
  std::atomic<int> taken{0};
  std::atomic<int> working{3};
  std::thread feeders([&] {
    together(3, [&](int thread) {
      for (int i = 0; i < 200; ++i) {
        const auto position = building.position(0, 1 + thread + i * 0.01, 0);
        if (recording.updateStartPoint(*update, position)) ++taken;
        std::this_thread::yield();
      }
      --working;
    });
  });
  EXPECT_TRUE(KorvaniTest::pumpUntil([&] { return working == 0; }));
  feeders.join();
  KorvaniPlatform::joinGlobalQueue();
  pump();
  EXPECT_GT(taken, 0);
  EXPECT_EQ(count<KorvaniTools::PositionOperation>(), taken);
  EXPECT_EQ(deliveries().size(), static_cast<std::size_t>(taken) + 1);
}

}  // namespace
}  // namespace KorvaniNavigation
