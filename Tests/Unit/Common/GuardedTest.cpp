#include "Common/Guarded.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using KorvaniCommon::Guarded;

void onThreads(int count, const std::function<void()>& work) {
  std::vector<std::thread> threads;
  threads.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
}

/// Asks a guarded reference when it is destroyed; deadlocks if the lock is held then.
struct AskingValue {
  explicit AskingValue(Guarded<std::shared_ptr<AskingValue>>& owner, int& answered)
      : owner_(owner), answered_(answered) {}
  ~AskingValue() {
    owner_.load();
    ++answered_;
  }
  Guarded<std::shared_ptr<AskingValue>>& owner_;
  int& answered_;
};

TEST(Guarded, HoldsAValueInitialisedValueAtFirst) {
  EXPECT_EQ(Guarded<int>().load(), 0);
  EXPECT_EQ(Guarded<std::shared_ptr<int>>().load(), nullptr);
}

TEST(Guarded, HoldsTheValueItWasMadeWith) { EXPECT_EQ(Guarded<int>(7).load(), 7); }

TEST(Guarded, LoadGivesWhatWasStoredLast) {
  Guarded<std::string> name("lift");
  name.store("stairs");
  EXPECT_EQ(name.load(), "stairs");
}

TEST(Guarded, LoadGivesACopyThatLaterStoresDoNotTouch) {
  Guarded<std::vector<int>> levels({1, 2});
  const std::vector<int> before = levels.load();
  levels.store({3});
  EXPECT_EQ(before, (std::vector<int>{1, 2}));
}

TEST(Guarded, UpdateEditsTheHeldValueAndReturnsTheResult) {
  Guarded<std::vector<int>> levels({1, 2});
  const std::size_t count = levels.update([](std::vector<int>& held) {
    held.push_back(3);
    return held.size();
  });
  EXPECT_EQ(count, 3u);
  EXPECT_EQ(levels.load(), (std::vector<int>{1, 2, 3}));
}

TEST(Guarded, UpdateMayReturnNothing) {
  Guarded<int> number(1);
  number.update([](int& held) { held = 2; });
  EXPECT_EQ(number.load(), 2);
}

TEST(Guarded, ReadLooksAtTheHeldValueWithoutCopyingIt) {
  const Guarded<std::string> name("lift");
  EXPECT_EQ(name.read([](const std::string& held) { return held.size(); }), 4u);
}

TEST(Guarded, ResultsOfReadAndUpdateAreCopiesOfReferencesReturned) {
  Guarded<std::string> name("lift");
  auto look = [](const std::string& held) -> const std::string& { return held; };
  auto edit = [](std::string& held) -> std::string& { return held; };
  static_assert(std::is_same_v<decltype(name.read(look)), std::string>);
  static_assert(std::is_same_v<decltype(name.update(edit)), std::string>);
  const std::string& copy = name.read(look);
  name.store("stairs");
  EXPECT_EQ(copy, "lift");
}

TEST(Guarded, StoreDestroysTheReplacedValueOutsideTheLock) {
  int answered = 0;
  Guarded<std::shared_ptr<AskingValue>> guarded;
  guarded.store(std::make_shared<AskingValue>(guarded, answered));
  guarded.store(nullptr);
  EXPECT_EQ(answered, 1);
}

TEST(Guarded, UpdateDestroysWhatTheEditDropsOutsideTheLock) {
  int answered = 0;
  Guarded<std::shared_ptr<AskingValue>> guarded;
  guarded.store(std::make_shared<AskingValue>(guarded, answered));
  guarded.update([](std::shared_ptr<AskingValue>& held) { held = nullptr; });
  EXPECT_EQ(answered, 1);
  EXPECT_EQ(guarded.load(), nullptr);
}

TEST(Guarded, UpdatesOfManyThreadsLoseNothing) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 5000;
  Guarded<int> counter;
  onThreads(kThreads, [&] {
    for (int i = 0; i < kRounds; ++i) counter.update([](int& held) { ++held; });
  });
  EXPECT_EQ(counter.load(), kThreads * kRounds);
}

TEST(Guarded, ReadersNeverSeeAHalfWrittenValue) {
  struct Pair {
    std::string first, second;
  };
  Guarded<Pair> pair;
  std::atomic<bool> running{true};
  std::thread writer([&] {
    for (int i = 0; i < 5000; ++i) {
      const std::string text(static_cast<std::size_t>(i % 40), 'x');
      if (i % 2 == 0)
        pair.store({text, text});
      else
        pair.update([&](Pair& held) { held.first = held.second = text; });
    }
    running = false;
  });
  onThreads(2, [&] {
    while (running) {
      const Pair seen = pair.load();
      EXPECT_EQ(seen.first, seen.second);
      EXPECT_TRUE(pair.read([](const Pair& held) { return held.first == held.second; }));
    }
  });
  writer.join();
}

TEST(Guarded, ReferencesSwappedByManyThreadsAreReleasedExactlyOnce) {
  std::atomic<int> alive{0};
  struct Counted {
    explicit Counted(std::atomic<int>& alive) : alive_(alive) { ++alive_; }
    ~Counted() { --alive_; }
    std::atomic<int>& alive_;
  };
  {
    Guarded<std::shared_ptr<Counted>> current;
    onThreads(4, [&] {
      for (int i = 0; i < 2000; ++i) {
        const auto mine = std::make_shared<Counted>(alive);
        current.store(mine);
        current.load();
        current.update([&](auto& held) {
          if (held == mine) held = nullptr;
        });
      }
    });
    EXPECT_LE(alive, 1);
  }
  EXPECT_EQ(alive, 0);
}

}  // namespace
