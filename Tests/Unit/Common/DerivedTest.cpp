#include "Common/Derived.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

namespace KorvaniTest {
namespace {

using KorvaniCommon::Derived;

struct DerivedSum {
  int value;
};

struct DerivedNames {
  std::string value;
};

std::shared_ptr<const DerivedSum> derivedSumOf(int value) {
  return std::make_shared<const DerivedSum>(DerivedSum{value});
}

TEST(Derived, MakesAFormOnceForAStamp) {
  const Derived derived;
  int made = 0;
  const auto ask = [&] {
    return derived.get<DerivedSum>(1, [&] {
      ++made;
      return derivedSumOf(7);
    });
  };
  const auto first = ask();
  EXPECT_EQ(ask(), first);
  EXPECT_EQ(first->value, 7);
  EXPECT_EQ(made, 1);
}

TEST(Derived, MakesAnotherFormForAnotherStampAndLeavesTheOldOneToItsHolders) {
  const Derived derived;
  const auto before = derived.get<DerivedSum>(1, [] { return derivedSumOf(7); });
  const auto after = derived.get<DerivedSum>(2, [] { return derivedSumOf(8); });
  EXPECT_EQ(before->value, 7);
  EXPECT_EQ(after->value, 8);
}

TEST(Derived, KeepsOneFormOfEachType) {
  const Derived derived;
  const auto sum = derived.get<DerivedSum>(1, [] { return derivedSumOf(7); });
  const auto names = derived.get<DerivedNames>(
      5, [] { return std::make_shared<const DerivedNames>(DerivedNames{"lift"}); });
  EXPECT_EQ(derived.get<DerivedSum>(1, [] { return derivedSumOf(0); }), sum);
  EXPECT_EQ(names->value, "lift");
}

TEST(Derived, IsEmptyUntilSomethingWasAskedFor) {
  const Derived derived;
  EXPECT_TRUE(derived.isEmpty());
  derived.get<DerivedSum>(1, [] { return derivedSumOf(7); });
  EXPECT_FALSE(derived.isEmpty());
}

TEST(Derived, ThreadsThatAskAtOnceShareOneForm) {
  const Derived derived;
  int made = 0;  // guarded by what is tested
  std::vector<std::shared_ptr<const DerivedSum>> forms(4);
  std::vector<std::thread> threads;
  for (auto& form : forms) {
    threads.emplace_back([&derived, &made, &form] {
      form = derived.get<DerivedSum>(1, [&made] {
        ++made;
        return derivedSumOf(7);
      });
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(made, 1);
  for (const auto& form : forms) EXPECT_EQ(form, forms[0]);
}

TEST(Derived, AFormThatWasGivenUpIsMadeByTheNextWhoAsks) {
  const Derived derived;
  const auto never = [] { return false; };
  EXPECT_EQ(derived.get<DerivedSum>(
                1, [] { return std::shared_ptr<const DerivedSum>(); }, never),
            nullptr);
  const auto form = derived.get<DerivedSum>(
      1, [] { return derivedSumOf(7); }, never);
  ASSERT_NE(form, nullptr);
  EXPECT_EQ(form->value, 7);
}

TEST(Derived, AFormWhoseMakingThrewIsMadeByTheNextWhoAsks) {
  const Derived derived;
  const auto fail = []() -> std::shared_ptr<const DerivedSum> { throw std::bad_alloc(); };
  EXPECT_THROW(derived.get<DerivedSum>(1, fail), std::bad_alloc);
  EXPECT_EQ(derived.get<DerivedSum>(1, [] { return derivedSumOf(7); })->value, 7);
}

// The form is not ready before the one who waits for it has given up.
TEST(Derived, WhoWaitsForAFormMayGiveUp) {
  const Derived derived;
  std::atomic<bool> isBeingMade{false};
  std::atomic<bool> gaveUp{false};
  std::thread maker([&] {
    derived.get<DerivedSum>(1, [&] {
      isBeingMade = true;
      while (!gaveUp) std::this_thread::yield();
      return derivedSumOf(7);
    });
  });
  while (!isBeingMade) std::this_thread::yield();
  EXPECT_EQ(derived.get<DerivedSum>(
                1, [] { return derivedSumOf(8); }, [] { return true; }),
            nullptr);
  gaveUp = true;
  maker.join();
  EXPECT_EQ(derived.get<DerivedSum>(1, [] { return derivedSumOf(8); })->value, 7);
}

TEST(Derived, IsReadyAtTheStampItWasMadeFor) {
  const Derived derived;
  EXPECT_EQ(derived.ready<DerivedSum>(1), nullptr);
  const auto form = derived.get<DerivedSum>(1, [] { return derivedSumOf(7); });
  EXPECT_EQ(derived.ready<DerivedSum>(1), form);
  EXPECT_EQ(derived.ready<DerivedSum>(2), nullptr);
  EXPECT_EQ(derived.ready<DerivedNames>(1), nullptr);
}

TEST(Derived, OtherFormsCanBeHadWhileOneIsMade) {
  const Derived derived;
  const auto sum = derived.get<DerivedSum>(1, [&] {
    const auto names = derived.get<DerivedNames>(
        1, [] { return std::make_shared<const DerivedNames>(DerivedNames{"lift"}); });
    return derivedSumOf(static_cast<int>(names->value.size()));
  });
  EXPECT_EQ(sum->value, 4);
}

}  // namespace
}  // namespace KorvaniTest
