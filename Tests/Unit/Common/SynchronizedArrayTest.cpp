#include "Common/SynchronizedArray.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using KorvaniCommon::SynchronizedArray;
using Numbers = std::vector<int>;

void onThreads(int count, const std::function<void(int)>& work) {
  std::vector<std::thread> threads;
  threads.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) threads.emplace_back(work, i);
  for (std::thread& thread : threads) thread.join();
}

/// Fills an array, which can be neither copied nor moved, with the numbers.
void fill(SynchronizedArray<int>& array, const Numbers& numbers) {
  for (const int number : numbers) array.append(number);
}

TEST(SynchronizedArray, IsEmptyAtFirst) {
  const SynchronizedArray<int> array;
  EXPECT_EQ(array.count(), 0u);
  EXPECT_EQ(array.snapshot(), Numbers{});
  EXPECT_EQ(array.indexOf(1), std::nullopt);
}

TEST(SynchronizedArray, AppendsAtTheEnd) {
  SynchronizedArray<int> array;
  fill(array, {3, 1, 3});
  EXPECT_EQ(array.snapshot(), (Numbers{3, 1, 3}));
  EXPECT_EQ(array.count(), 3u);
}

TEST(SynchronizedArray, IndexOfGivesTheFirstEqualElement) {
  SynchronizedArray<std::string> array;
  for (const char* text : {"a", "b", "a", "b"}) array.append(text);
  EXPECT_EQ(array.indexOf("b"), std::optional<std::size_t>(1));
  EXPECT_EQ(array.indexOf("a"), std::optional<std::size_t>(0));
  EXPECT_EQ(array.indexOf("c"), std::nullopt);
}

TEST(SynchronizedArray, ComparesWithTheGivenEquality) {
  struct SameValue {
    bool operator()(const std::shared_ptr<int>& a, const std::shared_ptr<int>& b) const {
      return *a == *b;
    }
  };
  SynchronizedArray<std::shared_ptr<int>, SameValue> array;
  array.append(std::make_shared<int>(1));
  array.append(std::make_shared<int>(2));
  EXPECT_EQ(array.indexOf(std::make_shared<int>(2)), std::optional<std::size_t>(1));
  EXPECT_FALSE(array.appendUnlessContained(std::make_shared<int>(1)));
}

TEST(SynchronizedArray, RemoveAtClosesTheGap) {
  SynchronizedArray<int> array;
  fill(array, {1, 2, 3});
  EXPECT_TRUE(array.removeAt(1));
  EXPECT_EQ(array.snapshot(), (Numbers{1, 3}));
  EXPECT_TRUE(array.removeAt(1));
  EXPECT_TRUE(array.removeAt(0));
  EXPECT_EQ(array.count(), 0u);
}

TEST(SynchronizedArray, RemoveAtBeyondTheEndDoesNothing) {
  SynchronizedArray<int> array;
  EXPECT_FALSE(array.removeAt(0));
  fill(array, {1, 2});
  EXPECT_FALSE(array.removeAt(2));
  EXPECT_EQ(array.snapshot(), (Numbers{1, 2}));
}

TEST(SynchronizedArray, RemoveAllEmptiesIt) {
  SynchronizedArray<int> array;
  fill(array, {1, 2});
  array.removeAll();
  EXPECT_EQ(array.count(), 0u);
  array.append(3);
  EXPECT_EQ(array.snapshot(), Numbers{3});
}

TEST(SynchronizedArray, AppendUnlessContainedListsAnElementOnce) {
  SynchronizedArray<int> array;
  EXPECT_TRUE(array.appendUnlessContained(1));
  EXPECT_TRUE(array.appendUnlessContained(2));
  EXPECT_FALSE(array.appendUnlessContained(1));
  EXPECT_EQ(array.snapshot(), (Numbers{1, 2}));
}

TEST(SynchronizedArray, ASnapshotIsNotTouchedByLaterChanges) {
  SynchronizedArray<int> array;
  array.append(1);
  const Numbers before = array.snapshot();
  array.removeAll();
  EXPECT_EQ(before, Numbers{1});
}

TEST(SynchronizedArray, PerformReturnsTheResultOfTheStep) {
  SynchronizedArray<int> array;
  EXPECT_EQ(array.perform([] { return 7; }), 7);
  bool done = false;
  array.perform([&] { done = true; });
  EXPECT_TRUE(done);
}

TEST(SynchronizedArray, TheStepMayUseTheArray) {
  SynchronizedArray<int> array;
  fill(array, {1, 2, 3});
  array.perform([&] {
    if (const auto index = array.indexOf(2)) array.removeAt(*index);
    array.append(4);
    array.perform([&] { array.appendUnlessContained(5); });
    EXPECT_EQ(array.count(), 4u);
  });
  EXPECT_EQ(array.snapshot(), (Numbers{1, 3, 4, 5}));
}

TEST(SynchronizedArray, AnotherThreadWaitsUntilTheStepIsDone) {
  SynchronizedArray<int> array;
  std::atomic<bool> appended{false};
  std::thread other;
  array.perform([&] {
    other = std::thread([&] {
      array.append(2);
      appended = true;
    });
    array.append(1);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(appended);
    EXPECT_EQ(array.count(), 1u);
  });
  other.join();
  EXPECT_EQ(array.snapshot(), (Numbers{1, 2}));
}

/// An element that, when it is destroyed, asks another thread to use the array and waits for
/// it; hangs if a lock of the array is held then.
struct AskingElement {
  using Array = SynchronizedArray<std::shared_ptr<AskingElement>>;

  AskingElement(Array& array, std::vector<std::size_t>& counts) : array_(array), counts_(counts) {}
  ~AskingElement() {
    std::thread([this] { counts_.push_back(array_.count()); }).join();
  }

  Array& array_;
  std::vector<std::size_t>& counts_;
};

TEST(SynchronizedArray, DestroysRemovedElementsOutsideTheLock) {
  std::vector<std::size_t> counts;
  AskingElement::Array array;
  for (int i = 0; i < 3; ++i) array.append(std::make_shared<AskingElement>(array, counts));
  array.removeAt(0);
  EXPECT_EQ(counts, (std::vector<std::size_t>{2}));
  array.removeAll();
  EXPECT_EQ(counts, (std::vector<std::size_t>{2, 0, 0}));
}

TEST(SynchronizedArray, DestroysElementsRemovedInAStepOnceTheOutermostStepIsDone) {
  std::vector<std::size_t> counts;
  AskingElement::Array array;
  for (int i = 0; i < 2; ++i) array.append(std::make_shared<AskingElement>(array, counts));
  array.perform([&] {
    array.perform([&] { array.removeAt(0); });
    EXPECT_TRUE(counts.empty());
    array.removeAll();
    EXPECT_TRUE(counts.empty());
  });
  EXPECT_EQ(counts, (std::vector<std::size_t>{0, 0}));
}

TEST(SynchronizedArray, DestroysAnElementItDidNotAppendOutsideTheLock) {
  struct AlwaysSame {
    bool operator()(const std::shared_ptr<int>&, const std::shared_ptr<int>&) const { return true; }
  };
  SynchronizedArray<std::shared_ptr<int>, AlwaysSame> array;
  array.append(nullptr);
  std::optional<std::size_t> countSeen;
  array.appendUnlessContained(std::shared_ptr<int>(new int(1), [&](const int* number) {
    std::thread([&] { countSeen = array.count(); }).join();
    delete number;
  }));
  EXPECT_EQ(countSeen, std::optional<std::size_t>(1));
}

TEST(SynchronizedArray, TheElementsDieWithIt) {
  const auto element = std::make_shared<int>(1);
  {
    SynchronizedArray<std::shared_ptr<int>> array;
    array.append(element);
    EXPECT_EQ(element.use_count(), 2);
  }
  EXPECT_EQ(element.use_count(), 1);
}

TEST(SynchronizedArray, AppendsOfManyThreadsLoseNothingAndKeepEachThreadsOrder) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 2000;
  SynchronizedArray<int> array;
  onThreads(kThreads, [&](int thread) {
    for (int i = 0; i < kRounds; ++i) array.append(thread * kRounds + i);
  });
  const Numbers all = array.snapshot();
  EXPECT_EQ(std::set<int>(all.begin(), all.end()).size(),
            static_cast<std::size_t>(kThreads * kRounds));
  Numbers last(kThreads, -1);
  for (const int number : all) {
    int& before = last[static_cast<std::size_t>(number / kRounds)];
    EXPECT_LT(before, number);
    before = number;
  }
}

TEST(SynchronizedArray, FindAndRemoveInOneStepRemovesEachElementExactlyOnce) {
  constexpr int kNumbers = 500;
  SynchronizedArray<int> array;
  for (int i = 0; i < kNumbers; ++i) array.append(i);
  std::atomic<int> removed{0};
  onThreads(4, [&](int) {
    for (int i = 0; i < kNumbers; ++i) {
      array.perform([&] {
        const auto index = array.indexOf(i);
        if (index && array.removeAt(*index)) ++removed;
      });
    }
  });
  EXPECT_EQ(removed, kNumbers);
  EXPECT_EQ(array.count(), 0u);
}

TEST(SynchronizedArray, AppendUnlessContainedOfManyThreadsListsEachElementOnce) {
  constexpr int kNumbers = 200;
  SynchronizedArray<int> array;
  std::atomic<int> added{0};
  onThreads(4, [&](int) {
    for (int i = 0; i < kNumbers; ++i) {
      if (array.appendUnlessContained(i)) ++added;
    }
  });
  EXPECT_EQ(added, kNumbers);
  EXPECT_EQ(array.count(), static_cast<std::size_t>(kNumbers));
}

TEST(SynchronizedArray, StandsEveryOperationFromManyThreadsAtOnce) {
  SynchronizedArray<std::shared_ptr<int>> array;
  std::atomic<int> alive{0};
  const auto make = [&](int number) {
    ++alive;
    return std::shared_ptr<int>(new int(number), [&](const int* dead) {
      array.count();  // as a destructor that uses the array would
      --alive;
      delete dead;
    });
  };
  onThreads(4, [&](int thread) {
    for (int i = 0; i < 1000; ++i) {
      const auto mine = make(i);
      array.append(mine);
      array.appendUnlessContained(mine);
      for (const auto& element : array.snapshot()) ASSERT_LT(*element, 1000);
      if (i % 97 == thread) array.removeAll();
      array.perform([&] {
        if (const auto index = array.indexOf(mine)) array.removeAt(*index);
      });
      array.removeAt(static_cast<std::size_t>(i % 3));
    }
  });
  array.removeAll();
  EXPECT_EQ(alive, 0);
}

}  // namespace
