#include "Common/OrderedDictionary.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using KorvaniCommon::OrderedDictionary;
using Names = OrderedDictionary<std::int64_t, std::string>;
using Entries = std::vector<std::pair<std::int64_t, std::string>>;

/// More entries than are searched one by one.
constexpr std::int64_t kMany = 100;
static_assert(kMany > static_cast<std::int64_t>(Names::kLinearLimit));

Entries entriesOf(const Names& names) { return Entries(names.begin(), names.end()); }

/// Keys `count - 1` down to 0, each with its own text.
Names descending(std::int64_t count) {
  Names names;
  for (std::int64_t key = count - 1; key >= 0; --key) names.set(key, std::to_string(key));
  return names;
}

TEST(OrderedDictionary, IsEmptyAtFirst) {
  const Names names;
  EXPECT_TRUE(names.empty());
  EXPECT_EQ(names.size(), 0u);
  EXPECT_EQ(names.begin(), names.end());
  EXPECT_EQ(names.find(1), nullptr);
  EXPECT_FALSE(names.contains(1));
  EXPECT_TRUE(names.keys().empty());
}

TEST(OrderedDictionary, FindsWhatWasSet) {
  Names names;
  names.set(7, "lift");
  ASSERT_NE(names.find(7), nullptr);
  EXPECT_EQ(*names.find(7), "lift");
  EXPECT_TRUE(names.contains(7));
  EXPECT_FALSE(names.contains(8));
  EXPECT_EQ(names.size(), 1u);
  EXPECT_FALSE(names.empty());
}

TEST(OrderedDictionary, IteratesInTheOrderOfInsertion) {
  Names names;
  names.set(7, "lift");
  names.set(-3, "stairs");
  names.set(5, "ramp");
  EXPECT_EQ(entriesOf(names), (Entries{{7, "lift"}, {-3, "stairs"}, {5, "ramp"}}));
  EXPECT_EQ(names.keys(), (std::vector<std::int64_t>{7, -3, 5}));
}

TEST(OrderedDictionary, ReplacingAValueKeepsItsPlace) {
  Names names;
  names.set(7, "lift");
  names.set(3, "stairs");
  names.set(7, "elevator");
  EXPECT_EQ(entriesOf(names), (Entries{{7, "elevator"}, {3, "stairs"}}));
}

TEST(OrderedDictionary, ReplacingAValueKeepsItsPlaceAmongMany) {
  Names names = descending(kMany);
  names.set(50, "fifty");
  EXPECT_EQ(names.keys(), descending(kMany).keys());
  EXPECT_EQ(*names.find(50), "fifty");
  EXPECT_EQ(names.size(), static_cast<std::size_t>(kMany));
}

TEST(OrderedDictionary, KeepsOrderAndFindsAllOnEverySizeAroundTheIndexLimit) {
  for (std::int64_t count = 0; count <= 2 * static_cast<std::int64_t>(Names::kLinearLimit) + 1;
       ++count) {
    const Names names = descending(count);
    std::int64_t expected = count;
    for (const auto& [key, name] : names) {
      EXPECT_EQ(key, --expected);
      EXPECT_EQ(*names.find(key), name);
    }
    EXPECT_EQ(expected, 0);
    EXPECT_FALSE(names.contains(count));
    EXPECT_FALSE(names.contains(-1));
  }
}

TEST(OrderedDictionary, FindMutableChangesTheValueInPlace) {
  Names names;
  names.set(7, "lift");
  *names.findMutable(7) += " A";
  EXPECT_EQ(*names.find(7), "lift A");
  EXPECT_EQ(names.findMutable(8), nullptr);
  EXPECT_EQ(names.size(), 1u);
}

TEST(OrderedDictionary, RowMakesAMissingValueAtTheEnd) {
  Names names;
  names.set(7, "lift");
  EXPECT_EQ(names.row(3), "");
  names.row(3) = "stairs";
  names[9] = "ramp";
  EXPECT_EQ(entriesOf(names), (Entries{{7, "lift"}, {3, "stairs"}, {9, "ramp"}}));
}

TEST(OrderedDictionary, RowGivesThePresentValue) {
  Names names;
  names.set(7, "lift");
  EXPECT_EQ(names.row(7), "lift");
  EXPECT_EQ(&names[7], names.find(7));
  EXPECT_EQ(names.size(), 1u);
}

TEST(OrderedDictionary, RowsNest) {
  OrderedDictionary<std::int64_t, OrderedDictionary<std::int64_t, std::string>> edges;
  edges[1].set(2, "one to two");
  edges[1].set(3, "one to three");
  edges[2].set(1, "two to one");
  EXPECT_EQ(edges.keys(), (std::vector<std::int64_t>{1, 2}));
  EXPECT_EQ(edges.find(1)->keys(), (std::vector<std::int64_t>{2, 3}));
  EXPECT_EQ(*edges.find(2)->find(1), "two to one");
}

TEST(OrderedDictionary, RemovingKeepsTheOrderOfTheRest) {
  Names names;
  for (const std::int64_t key : {4, 1, 3, 2}) names.set(key, std::to_string(key));
  EXPECT_TRUE(names.remove(1));
  EXPECT_EQ(names.keys(), (std::vector<std::int64_t>{4, 3, 2}));
  EXPECT_FALSE(names.contains(1));
  EXPECT_EQ(*names.find(2), "2");
}

TEST(OrderedDictionary, RemovingAnUnknownKeyChangesNothing) {
  Names names = descending(3);
  EXPECT_FALSE(names.remove(3));
  EXPECT_EQ(names.keys(), (std::vector<std::int64_t>{2, 1, 0}));
  EXPECT_FALSE(Names().remove(0));
}

TEST(OrderedDictionary, RemovingAmongManyLeavesAllOthersToBeFound) {
  Names names = descending(kMany);
  for (std::int64_t key = 0; key < kMany; key += 2) EXPECT_TRUE(names.remove(key));
  EXPECT_EQ(names.size(), static_cast<std::size_t>(kMany / 2));
  for (std::int64_t key = 0; key < kMany; ++key) {
    ASSERT_EQ(names.contains(key), key % 2 == 1) << key;
    if (key % 2 == 1) {
      EXPECT_EQ(*names.find(key), std::to_string(key));
    }
  }
  const auto keys = names.keys();
  EXPECT_TRUE(std::is_sorted(keys.rbegin(), keys.rend()));
}

TEST(OrderedDictionary, RemovesByTheEntrysOwnKey) {
  OrderedDictionary<std::string, int> numbers;
  for (int i = 0; i < 20; ++i) {
    numbers.set("a key that is too long to be kept in place " + std::to_string(i), i);
  }
  while (!numbers.empty()) EXPECT_TRUE(numbers.remove(numbers.begin()->first));
}

TEST(OrderedDictionary, ARemovedKeyThatIsSetAgainComesLast) {
  Names names = descending(3);
  names.remove(2);
  names.set(2, "again");
  EXPECT_EQ(entriesOf(names), (Entries{{1, "1"}, {0, "0"}, {2, "again"}}));
}

TEST(OrderedDictionary, CanBeEmptiedEntryByEntryAndFilledAgain) {
  Names names = descending(kMany);
  for (std::int64_t key = 0; key < kMany; ++key) EXPECT_TRUE(names.remove(key));
  EXPECT_TRUE(names.empty());
  names.set(1, "one");
  EXPECT_EQ(entriesOf(names), (Entries{{1, "one"}}));
}

TEST(OrderedDictionary, ClearRemovesEverything) {
  Names names = descending(kMany);
  names.clear();
  EXPECT_TRUE(names.empty());
  EXPECT_FALSE(names.contains(1));
  names.set(1, "one");
  EXPECT_EQ(entriesOf(names), (Entries{{1, "one"}}));
}

TEST(OrderedDictionary, ACopyIsIndependent) {
  const Names original = descending(kMany);
  Names copy = original;
  copy.set(0, "changed");
  copy.remove(5);
  copy.set(kMany, "new");
  EXPECT_EQ(entriesOf(original), entriesOf(descending(kMany)));
  EXPECT_EQ(*copy.find(0), "changed");
  EXPECT_EQ(copy.size(), original.size());
}

TEST(OrderedDictionary, CopyAssignmentReplacesTheContents) {
  const Names source = descending(kMany);
  Names target = descending(3);
  target = source;
  EXPECT_EQ(entriesOf(target), entriesOf(source));
  EXPECT_EQ(*target.find(kMany - 1), std::to_string(kMany - 1));
}

TEST(OrderedDictionary, AfterAssignmentOnlyTheNewKeysAreFound) {
  Names few;
  few.set(kMany + 1, "new");
  Names many = descending(kMany);
  for (const Names& assigned : {few, descending(2 * kMany), Names()}) {
    many = assigned;
    for (std::int64_t key = 0; key < 2 * kMany; ++key) {
      const auto keys = assigned.keys();
      const bool expected = std::find(keys.begin(), keys.end(), key) != keys.end();
      ASSERT_EQ(many.contains(key), expected) << key;
      if (expected) {
        ASSERT_EQ(*many.find(key), *assigned.find(key));
      }
    }
    many = descending(kMany);
  }
}

TEST(OrderedDictionary, SelfAssignmentKeepsTheContents) {
  Names names = descending(kMany);
  const Names& same = names;
  names = same;
  EXPECT_EQ(entriesOf(names), entriesOf(descending(kMany)));
}

TEST(OrderedDictionary, AMoveLeavesTheSourceEmptyAndUsable) {
  Names source = descending(kMany);
  Names target = std::move(source);
  EXPECT_EQ(entriesOf(target), entriesOf(descending(kMany)));
  // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): guaranteed to be empty
  EXPECT_TRUE(source.empty());
  EXPECT_FALSE(source.contains(1));
  source.set(1, "one");
  EXPECT_EQ(source.size(), 1u);
  target = std::move(source);
  EXPECT_EQ(entriesOf(target), (Entries{{1, "one"}}));
  EXPECT_TRUE(source.empty());
  // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
}

TEST(OrderedDictionary, HoldsValuesThatCannotBeCopied) {
  OrderedDictionary<std::string, std::unique_ptr<std::int64_t>> numbers;
  for (std::int64_t i = 0; i < kMany; ++i) {
    numbers.set(std::to_string(i), std::make_unique<std::int64_t>(i));
  }
  numbers.remove("50");
  for (std::int64_t i = 0; i < kMany; ++i) {
    const auto* found = numbers.find(std::to_string(i));
    ASSERT_EQ(found != nullptr, i != 50);
    if (found) {
      EXPECT_EQ(**found, i);
    }
  }
}

TEST(OrderedDictionary, MovesValuesWhenItGrowsAndShrinks) {
  struct Counted {
    explicit Counted(int& copies) : copies_(&copies) {}
    Counted(const Counted& other) : copies_(other.copies_) { ++*copies_; }
    Counted(Counted&&) noexcept = default;
    Counted& operator=(const Counted&) = delete;
    Counted& operator=(Counted&&) noexcept = default;
    int* copies_;
  };
  int copies = 0;
  OrderedDictionary<std::string, Counted> counted;
  for (int i = 0; i < 100; ++i) counted.set(std::to_string(i), Counted(copies));
  for (int i = 0; i < 100; i += 3) counted.remove(std::to_string(i));
  EXPECT_EQ(copies, 0);
}

TEST(OrderedDictionary, ReserveMovesNothingWhileItLasts) {
  Names names;
  names.set(-1, "first");
  names.reserve(kMany);
  const std::string* first = names.find(-1);
  for (std::int64_t key = 1; key < kMany; ++key) names.set(key, "");
  EXPECT_EQ(names.find(-1), first);
  EXPECT_EQ(*first, "first");
  names.reserve(1);
  EXPECT_EQ(names.find(-1), first);
}

TEST(OrderedDictionary, IterationIsReadOnly) {
  Names names = descending(1);
  static_assert(
      std::is_same_v<decltype(*names.begin()), const std::pair<const std::int64_t, std::string>&>);
  EXPECT_EQ(names.begin()->second, "0");
}

TEST(OrderedDictionary, AReplacedOrRemovedValueMayAskTheDictionaryWhenItIsDestroyed) {
  struct Asking {
    using Owner = OrderedDictionary<int, std::shared_ptr<Asking>>;
    Asking(const Owner& from, std::vector<std::size_t>& seen) : owner(&from), sizes(&seen) {}
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;
    const Owner* owner;
    std::vector<std::size_t>* sizes;
    ~Asking() { sizes->push_back(owner->size()); }
  };
  std::vector<std::size_t> sizes;
  OrderedDictionary<int, std::shared_ptr<Asking>> asking;
  const auto make = [&] { return std::make_shared<Asking>(asking, sizes); };
  asking.set(1, make());
  asking.set(2, make());
  asking.set(1, make());
  asking.remove(2);
  asking.clear();
  EXPECT_EQ(sizes, (std::vector<std::size_t>{2, 1, 0}));
}

/// The same dictionary in the plainest way: a list that is searched from the front.
class NaiveDictionary {
 public:
  void set(std::int64_t key, const std::string& value) { row(key) = value; }

  const std::string* find(std::int64_t key) const {
    for (const auto& entry : entries_) {
      if (entry.first == key) return &entry.second;
    }
    return nullptr;
  }

  std::string& row(std::int64_t key) {
    for (auto& entry : entries_) {
      if (entry.first == key) return entry.second;
    }
    return entries_.emplace_back(key, "").second;
  }

  bool remove(std::int64_t key) {
    const auto before = entries_.size();
    std::erase_if(entries_, [&](const auto& entry) { return entry.first == key; });
    return entries_.size() != before;
  }

  void clear() { entries_.clear(); }

  const Entries& entries() const { return entries_; }

 private:
  Entries entries_;
};

/// One random operation on both; the keys are few, so that all of them are hit often.
void doTheSame(std::mt19937& random, std::int64_t keys, Names& names, NaiveDictionary& naive) {
  const std::int64_t key = std::uniform_int_distribution<std::int64_t>(-keys, keys)(random);
  const std::string value = std::to_string(random() % 1000);
  switch (random() % 16) {
    case 0:
    case 1:
    case 2:
    case 3:
      ASSERT_EQ(names.remove(key), naive.remove(key));
      return;
    case 4:
      if (random() % 50 != 0) return;
      names.clear();
      naive.clear();
      return;
    case 5:
    case 6:
      names.row(key) += value;
      naive.row(key) += value;
      return;
    case 7: {
      Names moved = std::move(names);
      names = moved;
      return;
    }
    default:
      names.set(key, value);
      naive.set(key, value);
  }
}

TEST(OrderedDictionary, DoesTheSameAsAPlainListOnRandomOperations) {
  for (const std::int64_t keys : {2, 5, 20, 200}) {
    for (unsigned seed = 0; seed < 10; ++seed) {
      SCOPED_TRACE(testing::Message() << "keys " << keys << ", seed " << seed);
      std::mt19937 random(seed);
      Names names;
      NaiveDictionary naive;
      for (int step = 0; step < 2000; ++step) {
        ASSERT_NO_FATAL_FAILURE(doTheSame(random, keys, names, naive)) << "step " << step;
        ASSERT_EQ(names.size(), naive.entries().size());
        const auto key = static_cast<std::int64_t>(random() % 400) - 200;
        const std::string* expected = naive.find(key);
        ASSERT_EQ(names.contains(key), expected != nullptr);
        if (expected) {
          ASSERT_EQ(*names.find(key), *expected);
        }
        ASSERT_TRUE(step % 20 != 0 || entriesOf(names) == naive.entries()) << "step " << step;
      }
    }
  }
}

}  // namespace
