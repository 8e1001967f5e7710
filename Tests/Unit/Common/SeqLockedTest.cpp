#include "Common/SeqLocked.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace KorvaniTest {
namespace {

using KorvaniCommon::SeqLocked;

/// Three words that belong together.
struct Triple {
  double one = 0;
  double two = 0;
  double three = 0;

  explicit Triple(double value) : one(value), two(value + 1), three(value + 2) {}

  bool isWhole() const { return two == one + 1 && three == one + 2; }
};

TEST(SeqLocked, HoldsWhatItWasMadeWith) {
  const SeqLocked<Triple> held(Triple(5));
  EXPECT_EQ(held.load().one, 5);
  EXPECT_TRUE(held.load().isWhole());
}

TEST(SeqLocked, HoldsWhatWasStoredLast) {
  SeqLocked<Triple> held(Triple(5));
  held.store(Triple(8));
  held.store(Triple(13));
  EXPECT_EQ(held.load().one, 13);
  EXPECT_TRUE(held.load().isWhole());
}

TEST(SeqLocked, ReadersNeverSeeHalfOfAValue) {
  constexpr int kStores = 20'000;
  SeqLocked<Triple> held(Triple(0));
  std::atomic<bool> isOver{false};
  std::atomic<int> torn{0};
  std::atomic<int> read{0};
  std::vector<std::thread> readers;
  for (int i = 0; i < 2; ++i) {
    readers.emplace_back([&] {
      while (!isOver) {
        torn += held.load().isWhole() ? 0 : 1;
        ++read;
      }
    });
  }
  while (read == 0) std::this_thread::yield();
  for (int i = 1; i <= kStores; ++i) held.store(Triple(i));
  isOver = true;
  for (auto& reader : readers) reader.join();
  EXPECT_EQ(torn, 0);
  EXPECT_EQ(held.load().one, kStores);
}

TEST(SeqLocked, SeveralWritersDoNotMixTheirValues) {
  constexpr int kStores = 5'000;
  SeqLocked<Triple> held(Triple(0));
  std::atomic<int> torn{0};
  std::vector<std::thread> writers;
  for (int writer = 0; writer < 3; ++writer) {
    writers.emplace_back([&, writer] {
      for (int i = 0; i < kStores; ++i) {
        held.store(Triple(writer * kStores + i));
        torn += held.load().isWhole() ? 0 : 1;
      }
    });
  }
  for (auto& writer : writers) writer.join();
  EXPECT_EQ(torn, 0);
}

}  // namespace
}  // namespace KorvaniTest
