#include "Navigation/Routing/RemainingSteps.hpp"

#include <gtest/gtest.h>

#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::RemainingSteps;
using KorvaniNavigation::Step;

class RemainingStepsTest : public testing::Test {
 protected:
  /// Four steps of 10 m each, northwards.
  std::shared_ptr<const RemainingSteps> whole() const {
    std::vector<Step> steps;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
      steps.emplace_back(points[i], points[i + 1], 10.0);
    }
    return std::make_shared<const RemainingSteps>(std::move(steps));
  }

  std::vector<PointPtr> points{at(48.0, 11), at(48.1, 11), at(48.2, 11), at(48.3, 11),
                               at(48.4, 11)};
  PointPtr person = at(48.15, 11);
};

TEST_F(RemainingStepsTest, AreAllOfThemAtFirst) {
  const auto steps = whole();
  EXPECT_EQ(steps->view().size(), 4U);
  EXPECT_EQ(steps->gone(), 0U);
  EXPECT_FALSE(steps->isShortened());
  EXPECT_EQ(&steps->list(), &steps->computed()->steps);
}

TEST_F(RemainingStepsTest, BeginWithTheShortenedStepAndGoOnAsComputed) {
  const auto steps = whole()->after(1, Step(person, points[2], 5.0));
  ASSERT_EQ(steps->view().size(), 3U);
  EXPECT_TRUE(steps->isShortened());
  EXPECT_EQ(steps->gone(), 1U);
  EXPECT_EQ(steps->view()[0].start(), person);
  EXPECT_EQ(steps->view()[0].distance(), 5.0);
  EXPECT_EQ(steps->view()[1].start(), points[2]);
  EXPECT_EQ(steps->view().back().end(), points[4]);
}

TEST_F(RemainingStepsTest, ShareTheComputedOnesHoweverOftenTheyAreShortened) {
  const auto first = whole();
  const auto second = first->after(1, Step(person, points[2], 5.0));
  const auto third = second->after(0, Step(person, points[2], 4.0));
  const auto fourth = third->after(2, Step(person, points[4], 3.0));
  EXPECT_EQ(fourth->computed(), first->computed());
  EXPECT_EQ(fourth->gone(), 3U);
  ASSERT_EQ(fourth->view().size(), 1U);
  EXPECT_EQ(fourth->view().back().distance(), 3.0);
}

TEST_F(RemainingStepsTest, AreListedOnceAndInOrder) {
  const auto steps = whole()->after(2, Step(person, points[3], 5.0));
  const std::vector<Step>& list = steps->list();
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].start(), person);
  EXPECT_EQ(list[1].start(), points[3]);
  EXPECT_EQ(&steps->list(), &list);
}

TEST_F(RemainingStepsTest, AreNoneOfNone) {
  const RemainingSteps steps{std::vector<Step>()};
  EXPECT_TRUE(steps.view().empty());
  EXPECT_TRUE(steps.list().empty());
}

}  // namespace
}  // namespace KorvaniTest
