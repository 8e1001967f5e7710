#include "Drawing/LabelPlacement.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <vector>

namespace KorvaniTest {
namespace {

using KorvaniTools::FixedMark;
using KorvaniTools::LabelSide;
using KorvaniTools::LabelTry;
using KorvaniTools::LabelWish;
using KorvaniTools::PixelBox;
using KorvaniTools::PlacedLabel;
using KorvaniTools::placeLabels;

constexpr PixelBox kPaper{0, 0, 400, 300};

LabelWish wishAt(double x, double y, int priority = 0, double width = 60) {
  LabelWish wish;
  wish.x = x;
  wish.y = y;
  wish.radius = 3;
  wish.priority = priority;
  for (const LabelSide side :
       {LabelSide::right, LabelSide::left, LabelSide::below, LabelSide::above}) {
    LabelTry attempt;
    attempt.side = side;
    attempt.width = width;
    attempt.height = 12;
    wish.tries.push_back(attempt);
  }
  return wish;
}

PixelBox onPaper(const PlacedLabel& label, const LabelWish& wish, double zoom) {
  return {wish.x * zoom + label.box.left, wish.y * zoom + label.box.top,
          wish.x * zoom + label.box.right, wish.y * zoom + label.box.bottom};
}

PixelBox onPaper(const FixedMark& mark, double zoom) {
  return {mark.x * zoom + mark.box.left, mark.y * zoom + mark.box.top,
          mark.x * zoom + mark.box.right, mark.y * zoom + mark.box.bottom};
}

/// Nothing that is shown at `zoom` lies on anything else.
void expectClear(const std::vector<PlacedLabel>& labels, const std::vector<LabelWish>& wishes,
                 const std::vector<FixedMark>& marks, double zoom) {
  std::vector<PixelBox> shown;
  for (const PlacedLabel& label : labels) {
    if (label.zoom > zoom) continue;
    const PixelBox box = onPaper(label, wishes[label.wish], zoom);
    for (const PixelBox& other : shown) ASSERT_FALSE(box.overlaps(other)) << "zoom " << zoom;
    shown.push_back(box);
    for (std::size_t i = 0; i < marks.size(); ++i) {
      if (wishes[label.wish].mark == i) continue;
      ASSERT_FALSE(box.overlaps(onPaper(marks[i], zoom))) << "mark " << i << ", zoom " << zoom;
    }
  }
}

TEST(LabelPlacement, PutsALabelBesideItsPlace) {
  const std::vector<LabelWish> wishes{wishAt(100, 100)};
  const auto labels = placeLabels(wishes, kPaper, {}, {1});
  ASSERT_EQ(labels.size(), 1U);
  EXPECT_EQ(wishes[0].tries[labels[0].attempt].side, LabelSide::right);
  EXPECT_GT(labels[0].box.left, 3);
  EXPECT_DOUBLE_EQ(labels[0].box.width(), 60);
  EXPECT_DOUBLE_EQ(labels[0].box.top, -6);
}

TEST(LabelPlacement, TriesTheOtherSides) {
  const std::vector<LabelWish> wishes{wishAt(390, 100)};
  const auto labels = placeLabels(wishes, kPaper, {}, {1});
  ASSERT_EQ(labels.size(), 1U);
  EXPECT_EQ(wishes[0].tries[labels[0].attempt].side, LabelSide::left);
}

TEST(LabelPlacement, LeavesOutWhatHasNoRoom) {
  std::vector<LabelWish> wishes(10, wishAt(200, 150));
  const auto labels = placeLabels(wishes, kPaper, {}, {1});
  EXPECT_EQ(labels.size(), 4U);  // one on each side
}

TEST(LabelPlacement, ServesHigherPrioritiesFirst) {
  const std::vector<LabelWish> wishes{wishAt(5, 10, 1, 380), wishAt(8, 10, 2, 380)};
  const PixelBox line{0, 0, 400, 20};
  const auto labels = placeLabels(wishes, line, {}, {1});
  ASSERT_EQ(labels.size(), 1U);
  EXPECT_EQ(labels[0].wish, 1U);
}

TEST(LabelPlacement, KeepsOffMarksButNotItsOwn) {
  LabelWish wish = wishAt(100, 100);
  wish.mark = 0;
  const std::vector<LabelWish> wishes{wish};
  const std::vector<FixedMark> marks{{100, 100, {-8, -8, 8, 8}}, {120, 100, {-5, -5, 5, 5}}};
  const auto labels = placeLabels(wishes, kPaper, marks, {1});
  ASSERT_EQ(labels.size(), 1U);
  EXPECT_EQ(wishes[0].tries[labels[0].attempt].side, LabelSide::left);
}

/// Where the first of the wishes is written; absent: nowhere.
std::optional<LabelSide> sideOfFirst(const std::vector<LabelWish>& wishes,
                                     const std::vector<FixedMark>& marks) {
  for (const PlacedLabel& label : placeLabels(wishes, kPaper, marks, {1})) {
    if (label.wish == 0) return wishes[0].tries[label.attempt].side;
  }
  return {};
}

/// A mark to the right, to the left, below or above (100, 100).
FixedMark markAt(double right, double down, bool soft) {
  return {100 + right, 100 + down, {-5, -5, 5, 5}, soft};
}

TEST(LabelPlacement, CoversSoftMarksOnlyForWantOfOtherRoomWhenItInsists) {
  LabelWish wish = wishAt(100, 100);
  std::vector<FixedMark> soft{markAt(20, 0, true), markAt(-20, 0, true), markAt(0, 12, true)};
  EXPECT_EQ(sideOfFirst({wish}, soft), LabelSide::above);
  wish.insists = true;
  EXPECT_EQ(sideOfFirst({wish}, soft), LabelSide::above);
  soft.push_back(markAt(0, -12, true));
  EXPECT_EQ(sideOfFirst({wish}, soft), LabelSide::right);
  wish.insists = false;
  EXPECT_EQ(sideOfFirst({wish}, soft), std::nullopt);
}

TEST(LabelPlacement, CoversHardMarksBeforeLabelsWhenItInsists) {
  LabelWish wish = wishAt(100, 100);
  wish.insists = true;
  std::vector<FixedMark> hard{markAt(20, 0, false), markAt(-20, 0, true), markAt(0, 12, false),
                              markAt(0, -12, false)};
  EXPECT_EQ(sideOfFirst({wish}, hard), LabelSide::left);
  hard[1].soft = false;
  EXPECT_EQ(sideOfFirst({wish}, hard), LabelSide::right);
  LabelWish other = wishAt(100, 100, 1);
  other.insists = true;
  EXPECT_EQ(sideOfFirst({wish, other}, hard), LabelSide::left);
}

TEST(LabelPlacement, WritesWhatInsistsInAnyCase) {
  std::vector<LabelWish> wishes(9, wishAt(200, 150));
  for (LabelWish& wish : wishes) wish.insists = true;
  EXPECT_EQ(placeLabels(wishes, kPaper, {}, {1}).size(), 9U);
}

TEST(LabelPlacement, SlidesOntoThePaperWhatInsistsAndIsTooNearToItsEdge) {
  LabelWish wish = wishAt(15, 5, 0, 50);
  wish.insists = true;
  wish.tries.resize(2);
  const PixelBox narrow{0, 0, 60, 10.5};
  const auto labels = placeLabels({wish}, narrow, {}, {1});
  ASSERT_EQ(labels.size(), 1U);
  const PixelBox box = onPaper(labels[0], wish, 1);
  EXPECT_DOUBLE_EQ(box.right, 60);
  EXPECT_DOUBLE_EQ(box.top, 0);
  wish.x = 61;
  EXPECT_TRUE(placeLabels({wish}, narrow, {}, {1}).empty()) << "its place is not seen";
}

TEST(LabelPlacement, PutsALabelBesideAMarkThatLiesUponItsPlace) {
  LabelWish wish = wishAt(100, 100);
  wish.mark = 0;
  const std::vector<FixedMark> marks{{100, 100, {-3, -3, 3, 3}, true},
                                     {100.0001, 100, {-9, -9, 9, 9}, false}};
  const auto labels = placeLabels({wish}, kPaper, marks, {1, 2});
  ASSERT_EQ(labels.size(), 1U);
  EXPECT_EQ(labels[0].zoom, 1);
  EXPECT_GE(labels[0].box.left, 9);
  for (const double zoom : {1.0, 3.0, 100.0}) expectClear(labels, {wish}, marks, zoom);
}

TEST(LabelPlacement, NamesTwoPlacesOnOneSpot) {
  std::vector<LabelWish> wishes(2, wishAt(200, 150));
  wishes[0].mark = 0;
  wishes[1].mark = 1;
  const std::vector<FixedMark> marks(2, {200, 150, {-3, -3, 3, 3}, true});
  const auto labels = placeLabels(wishes, kPaper, marks, {1});
  ASSERT_EQ(labels.size(), 2U);
  expectClear(labels, wishes, marks, 1);
}

TEST(LabelPlacement, KeepsOffAMarkThatMagnificationMovesThroughTheText) {
  LabelWish wish = wishAt(100, 100);
  wish.tries.resize(1);
  // It lies upon the place, and later where the text would be.
  const std::vector<FixedMark> marks{{101, 100, {-4, -4, 2, 4}, false}};
  EXPECT_TRUE(placeLabels({wish}, kPaper, marks, {1, 4, 16}).empty());
  const std::vector<FixedMark> passed{{99, 100, {-4, -4, 2, 4}, false}};
  EXPECT_EQ(placeLabels({wish}, kPaper, passed, {1}).size(), 1U);
}

TEST(LabelPlacement, StaysWithinARoomThatGrowsWithTheMagnification) {
  LabelWish wish = wishAt(100, 100);
  LabelTry inside;
  inside.side = LabelSide::centre;
  inside.width = 60;
  inside.height = 12;
  inside.within = PixelBox{80, 90, 120, 110};
  wish.tries = {inside};
  EXPECT_TRUE(placeLabels({wish}, kPaper, {}, {1}).empty());
  const auto labels = placeLabels({wish}, kPaper, {}, {1, 2, 4});
  ASSERT_EQ(labels.size(), 1U);
  EXPECT_EQ(labels[0].zoom, 2);
}

TEST(LabelPlacement, FindsRoomForMoreWhenMagnified) {
  const std::vector<LabelWish> wishes(8, wishAt(200, 150));
  std::vector<LabelWish> near = wishes;
  for (std::size_t i = 0; i < near.size(); ++i) near[i].y += 4 * static_cast<double>(i);
  EXPECT_LT(placeLabels(near, kPaper, {}, {1}).size(), near.size());
  EXPECT_EQ(placeLabels(near, kPaper, {}, {1, 2, 4, 8}).size(), near.size());
}

std::vector<LabelWish> randomWishes(std::mt19937& random, std::size_t count) {
  std::vector<LabelWish> wishes;
  const auto below = [&](unsigned limit) { return static_cast<double>(random() % limit); };
  for (std::size_t i = 0; i < count; ++i) {
    wishes.push_back(
        wishAt(below(400), below(300), static_cast<int>(random() % 4), 20 + below(60)));
    wishes.back().mark = i;
  }
  return wishes;
}

TEST(LabelPlacement, NeverLetsLabelsOverlapAtAnyMagnification) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto wishes = randomWishes(random, 120);
    std::vector<FixedMark> marks;
    for (const LabelWish& wish : wishes) marks.push_back({wish.x, wish.y, {-3, -3, 3, 3}});
    const auto labels = placeLabels(wishes, kPaper, marks, {1, 2, 4});
    EXPECT_GT(labels.size(), 20U);
    // Between the magnifications as well, and beyond.
    for (const double zoom : {1.0, 1.3, 2.0, 2.9, 4.0, 7.5}) {
      expectClear(labels, wishes, marks, zoom);
    }
  }
}

TEST(LabelPlacement, KeepsLabelsOnThePaper) {
  std::mt19937 random(7);
  const auto wishes = randomWishes(random, 200);
  for (const PlacedLabel& label : placeLabels(wishes, kPaper, {}, {1})) {
    const PixelBox box = onPaper(label, wishes[label.wish], 1);
    EXPECT_GE(box.left, kPaper.left);
    EXPECT_GE(box.top, kPaper.top);
    EXPECT_LE(box.right, kPaper.right);
    EXPECT_LE(box.bottom, kPaper.bottom);
  }
}

TEST(LabelPlacement, SaysNothingTwiceNearBy) {
  std::vector<LabelWish> wishes{wishAt(50, 40), wishAt(120, 40), wishAt(120, 200), wishAt(330, 40)};
  for (std::size_t i : {0U, 1U, 3U}) wishes[i].saying = 7;
  wishes[2].saying = 8;
  const auto labels = placeLabels(wishes, kPaper, {}, {1, 4});
  ASSERT_EQ(labels.size(), 4U);
  EXPECT_EQ(labels[0].wish, 0U);
  EXPECT_EQ(labels[1].wish, 2U);
  EXPECT_EQ(labels[2].wish, 3U);
  EXPECT_EQ(labels[2].zoom, 1);
  EXPECT_EQ(labels[3].wish, 1U);  // magnified, it stands far enough from the others
  EXPECT_EQ(labels[3].zoom, 4);
}

TEST(LabelPlacement, GivesTheSameLabelsForTheSameWishes) {
  std::mt19937 random(3);
  const auto wishes = randomWishes(random, 150);
  const auto first = placeLabels(wishes, kPaper, {}, {1, 2});
  const auto second = placeLabels(wishes, kPaper, {}, {1, 2});
  ASSERT_EQ(first.size(), second.size());
  for (std::size_t i = 0; i < first.size(); ++i) {
    EXPECT_EQ(first[i].wish, second[i].wish);
    EXPECT_EQ(first[i].attempt, second[i].attempt);
  }
}

}  // namespace
}  // namespace KorvaniTest
