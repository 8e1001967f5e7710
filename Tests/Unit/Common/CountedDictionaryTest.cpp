#include "Common/CountedDictionary.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KorvaniTest {
namespace {

using KorvaniCommon::CountedDictionary;
using KorvaniCommon::Revision;
using CountedRow = CountedDictionary<int, std::string>;
using CountedTable = CountedDictionary<int, CountedRow>;

class CountedDictionaryTest : public testing::Test {
 protected:
  CountedDictionaryTest() {
    table[1].set(2, "stairs");
    table.reportTo(revision);
  }

  /// Whether `change` was told to the table's owner.
  bool isTold(const std::function<void()>& change) const {
    const auto before = revision->stamp();
    change();
    return revision->stamp() > before;
  }

  std::shared_ptr<Revision> revision = std::make_shared<Revision>();
  CountedTable table;
};

TEST_F(CountedDictionaryTest, TellsItsOwnerOfAChangeInARow) {
  EXPECT_TRUE(isTold([&] { table[1].set(2, "lift"); }));
  EXPECT_TRUE(isTold([&] { table.row(1).remove(2); }));
  EXPECT_TRUE(isTold([&] { table.row(1).clear(); }));
}

TEST_F(CountedDictionaryTest, TakesAValueByItsPlace) {
  EXPECT_TRUE(isTold([&] { table[1][2] = "lift"; }));
  EXPECT_EQ(*table.find(1)->find(2), "lift");
  EXPECT_TRUE(isTold([&] { table.findMutable(1)->set(3, "ramp"); }));
  EXPECT_EQ(table.findMutable(9), nullptr);
}

TEST_F(CountedDictionaryTest, TellsItsOwnerOfNewAndRemovedRows) {
  EXPECT_TRUE(isTold([&] { table.row(5); }));
  EXPECT_TRUE(isTold([&] { table.row(5).set(1, "ramp"); }));
  EXPECT_TRUE(isTold([&] { table.set(6, CountedRow()); }));
  EXPECT_TRUE(isTold([&] { table.row(6).set(1, "ramp"); }));
  EXPECT_TRUE(isTold([&] { table.remove(5); }));
  EXPECT_TRUE(isTold([&] { table.clear(); }));
}

TEST_F(CountedDictionaryTest, TellsItsOwnerOfAssignmentAndKeepsIt) {
  CountedTable other;
  other[7].set(8, "door");
  EXPECT_TRUE(isTold([&] { table = other; }));
  EXPECT_TRUE(isTold([&] { table[7].set(8, "gate"); }));
  EXPECT_EQ(*other.find(7)->find(8), "door");
  CountedTable taken;
  EXPECT_TRUE(isTold([&] { taken = std::move(table); }));
  EXPECT_EQ(*taken.find(7)->find(8), "gate");
}

TEST_F(CountedDictionaryTest, TellsNothingOfReading) {
  EXPECT_FALSE(isTold([&] {
    EXPECT_EQ(*table.find(1)->find(2), "stairs");
    EXPECT_TRUE(table.contains(1));
    EXPECT_EQ(table.keys(), std::vector<int>{1});
    EXPECT_EQ(table.size(), 1U);
    EXPECT_FALSE(table.empty());
    for (const auto& [key, row] : table) EXPECT_EQ(row.size(), 1U) << key;
  }));
}

TEST_F(CountedDictionaryTest, TellsNothingOfWhatChangesNothing) {
  EXPECT_FALSE(isTold([&] {
    table.row(1);
    table.remove(99);
  }));
}

TEST_F(CountedDictionaryTest, ACopyTellsNobody) {
  CountedTable copy = table;
  EXPECT_FALSE(isTold([&] {
    copy[1].set(2, "lift");
    copy.clear();
  }));
  EXPECT_EQ(*table.find(1)->find(2), "stairs");
}

TEST_F(CountedDictionaryTest, RowsGoOnTellingWhenOthersMakeThemMove) {
  for (int key = 2; key < 100; ++key) table[key].set(1, "corridor");
  table.remove(50);
  EXPECT_TRUE(isTold([&] { table[1].set(2, "lift"); }));
  EXPECT_TRUE(isTold([&] { table[99].set(1, "lift"); }));
}

TEST_F(CountedDictionaryTest, ADictionaryThatWasMovedAwayGoesOnTelling) {
  const CountedTable taken = std::move(table);
  EXPECT_TRUE(isTold([&] { table[1].set(2, "lift"); }));
  EXPECT_EQ(*taken.find(1)->find(2), "stairs");
}

TEST_F(CountedDictionaryTest, ARowMayOutliveTheOwnersRevision) {
  CountedTable owned;
  {
    auto owner = std::make_shared<Revision>();
    owned.reportTo(owner);
  }
  owned[1].set(2, "lift");
  EXPECT_EQ(*owned.find(1)->find(2), "lift");
}

}  // namespace
}  // namespace KorvaniTest
