#include "Common/CountedArray.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KorvaniTest {
namespace {

using KorvaniCommon::CountedArray;
using KorvaniCommon::Revision;
using CountedList = CountedArray<std::string>;
using CountedStrings = std::vector<std::string>;

struct CountedTotal {
  std::size_t value;
};

class CountedArrayTest : public testing::Test {
 protected:
  CountedArrayTest() { list.reportTo(revision); }

  /// Whether `change` was told to the list's owner.
  bool isTold(const std::function<void()>& change) const {
    const auto before = revision->stamp();
    change();
    return revision->stamp() > before;
  }

  std::shared_ptr<Revision> revision = std::make_shared<Revision>();
  CountedList list{"a", "b", "c"};
};

TEST_F(CountedArrayTest, ReadsLikeAList) {
  EXPECT_EQ(list.size(), 3U);
  EXPECT_FALSE(list.empty());
  EXPECT_EQ(list[1], "b");
  EXPECT_EQ(list.at(2), "c");
  EXPECT_EQ(list.front(), "a");
  EXPECT_EQ(list.back(), "c");
  EXPECT_EQ(CountedStrings(list.begin(), list.end()), (CountedStrings{"a", "b", "c"}));
  EXPECT_THROW(list.at(3), std::out_of_range);
}

TEST_F(CountedArrayTest, TellsItsOwnerOfEveryChange) {
  EXPECT_TRUE(isTold([&] { list.push_back("d"); }));
  EXPECT_TRUE(isTold([&] { list.set(0, "A"); }));
  EXPECT_TRUE(isTold([&] { list.insert(list.begin() + 1, "x"); }));
  EXPECT_TRUE(isTold([&] { list.erase(list.begin() + 2); }));
  EXPECT_EQ(list, (CountedList{"A", "x", "c", "d"}));
  EXPECT_TRUE(isTold([&] { list = CountedList{"z"}; }));
  EXPECT_TRUE(isTold([&] { list.clear(); }));
  EXPECT_TRUE(list.empty());
}

TEST_F(CountedArrayTest, ChangesLikeAList) {
  EXPECT_TRUE(isTold([&] { list.emplace_back(2, 'd'); }));
  EXPECT_EQ(list.back(), "dd");
  EXPECT_TRUE(isTold([&] { list.pop_back(); }));
  EXPECT_TRUE(isTold([&] { list.resize(4); }));
  EXPECT_EQ(list, (CountedList{"a", "b", "c", ""}));
  EXPECT_TRUE(isTold([&] { list.erase(list.begin() + 1, list.end() - 1); }));
  EXPECT_EQ(list, (CountedList{"a", ""}));
  const CountedStrings others{"x", "y"};
  EXPECT_TRUE(isTold([&] { list.assign(others.begin(), others.end()); }));
  EXPECT_EQ(CountedStrings(list.rbegin(), list.rend()), (CountedStrings{"y", "x"}));
  EXPECT_EQ(list.data()[1], "y");
}

TEST_F(CountedArrayTest, TellsItsOwnerWhenItIsMovedAway) {
  CountedList taken;
  EXPECT_TRUE(isTold([&] { taken = std::move(list); }));
  EXPECT_EQ(taken, (CountedList{"a", "b", "c"}));
}

TEST_F(CountedArrayTest, TellsNothingOfReadingCopyingAndMakingRoom) {
  EXPECT_FALSE(isTold([&] {
    const CountedList copy = list;
    EXPECT_EQ(copy, list);
    list.reserve(100);
    EXPECT_EQ(list.elements().size(), 3U);
  }));
}

TEST_F(CountedArrayTest, ACopyTellsNobody) {
  CountedList copy = list;
  EXPECT_FALSE(isTold([&] { copy.push_back("d"); }));
}

TEST_F(CountedArrayTest, CopiesShareTheirElementsUntilOneChanges) {
  CountedList copy = list;
  EXPECT_TRUE(copy.sharesWith(list));
  list.push_back("d");
  EXPECT_FALSE(copy.sharesWith(list));
  EXPECT_EQ(copy, (CountedList{"a", "b", "c"}));
  EXPECT_EQ(list.size(), 4U);
  copy.clear();
  EXPECT_EQ(list.size(), 4U);
}

TEST_F(CountedArrayTest, EqualListsNeedNotShareTheirElements) {
  const CountedList other{"a", "b", "c"};
  EXPECT_EQ(list, other);
  EXPECT_FALSE(list.sharesWith(other));
}

TEST_F(CountedArrayTest, WhatIsComputedIsSharedByCopiesAndDroppedByAChange) {
  const auto totalOf = [](const CountedList& of) {
    return of.derived().get<CountedTotal>(
        1, [&of] { return std::make_shared<const CountedTotal>(CountedTotal{of.size()}); });
  };
  const CountedList copy = list;
  const auto total = totalOf(list);
  EXPECT_EQ(totalOf(copy), total);
  list.push_back("d");
  EXPECT_EQ(totalOf(list)->value, 4U);
  EXPECT_EQ(totalOf(copy), total);
}

TEST_F(CountedArrayTest, WhatIsComputedIsDroppedByAChangeOfAListWithoutCopies) {
  const auto total = [this] {
    return list.derived()
        .get<CountedTotal>(
            1, [this] { return std::make_shared<const CountedTotal>(CountedTotal{list.size()}); })
        ->value;
  };
  EXPECT_EQ(total(), 3U);
  list.erase(list.begin());
  EXPECT_EQ(total(), 2U);
  list.set(0, "B");
  list.push_back("d");
  EXPECT_EQ(total(), 3U);
}

}  // namespace
}  // namespace KorvaniTest
