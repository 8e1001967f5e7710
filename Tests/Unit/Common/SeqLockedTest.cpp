#include "Common/SeqLocked.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>
#include <vector>

namespace KorvaniTest {
namespace {

using KorvaniCommon::SeqLocked;

/// Words that belong together: so many that a reader is often crossed while it copies them.
struct WordsOfOneValue {
  std::array<double, 64> words{};

  explicit WordsOfOneValue(double value) { words.fill(value); }

  double value() const { return words[0]; }

  bool isWhole() const {
    return std::all_of(words.begin(), words.end(),
                       [this](double word) { return word == words[0]; });
  }
};

using Held = SeqLocked<WordsOfOneValue>;

TEST(SeqLocked, HoldsWhatItWasMadeWith) {
  const Held held(WordsOfOneValue(5));
  EXPECT_EQ(held.load().value(), 5);
  EXPECT_TRUE(held.load().isWhole());
}

TEST(SeqLocked, HoldsWhatWasStoredLast) {
  Held held(WordsOfOneValue(5));
  held.store(WordsOfOneValue(8));
  held.store(WordsOfOneValue(13));
  EXPECT_EQ(held.load().value(), 13);
  EXPECT_TRUE(held.load().isWhole());
}

// The writer waits for the reader now and then, lest that never gets a value.
TEST(SeqLocked, ReadersNeverSeeHalfOfAValue) {
  constexpr int kLoads = 20'000;
  Held held(WordsOfOneValue(0));
  std::atomic<int> loads{0};
  std::thread writer([&] {
    for (int value = 1; loads < kLoads; ++value) {
      const int before = loads;
      held.store(WordsOfOneValue(value));
      while (value % 4 == 0 && loads == before) std::this_thread::yield();
    }
  });
  while (held.load().value() == 0) std::this_thread::yield();
  int torn = 0;
  double last = 0;
  bool goesBack = false;
  for (; loads < kLoads; ++loads) {
    const WordsOfOneValue seen = held.load();
    torn += seen.isWhole() ? 0 : 1;
    goesBack = goesBack || seen.value() < last;
    last = seen.value();
  }
  writer.join();
  EXPECT_EQ(torn, 0);
  EXPECT_FALSE(goesBack);
}

TEST(SeqLocked, SeveralWritersDoNotMixTheirValues) {
  constexpr int kStores = 20'000;
  Held held(WordsOfOneValue(0));
  std::atomic<int> torn{0};
  std::vector<std::thread> writers;
  for (int writer = 0; writer < 2; ++writer) {
    writers.emplace_back([&, writer] {
      for (int i = 0; i < kStores; ++i) {
        held.store(WordsOfOneValue(writer * kStores + i));
        torn += held.load().isWhole() ? 0 : 1;
      }
    });
  }
  for (auto& writer : writers) writer.join();
  EXPECT_EQ(torn, 0);
}

}  // namespace
}  // namespace KorvaniTest
