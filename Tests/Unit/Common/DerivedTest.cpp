#include "Common/Derived.hpp"

#include <gtest/gtest.h>

#include <memory>
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

}  // namespace
}  // namespace KorvaniTest
