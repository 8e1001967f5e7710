#include "Navigation/Directions/DirectionsFinder.hpp"

#include <gtest/gtest.h>

#include "Support/Points.hpp"

namespace KorvaniNavigation {
namespace {

/// Gives a fixed number of instructions, whatever the route.
class FixedFinder : public DirectionsFinder {
 public:
  explicit FixedFinder(std::size_t count) : count_(count) {}

  std::vector<Directions> directionsForRoute(const std::vector<Step>& /*steps*/,
                                             bool andHistoryUsage) const override {
    std::vector<Directions> directions;
    for (std::size_t i = 0; i < count_; ++i) {
      directions.emplace_back(andHistoryUsage ? DirectionsType::left : DirectionsType::right,
                              static_cast<double>(i + 1), nullptr, std::nullopt, std::nullopt);
    }
    return directions;
  }

 private:
  std::size_t count_;
};

std::vector<Step> anyRoute() {
  return {Step(KorvaniTest::at(48, 11), KorvaniTest::at(48, 12), 5.0)};
}

TEST(DirectionsFinder, StepsThatGiveNoDirectionsHaveNoFirstOne) {
  EXPECT_FALSE(FixedFinder(0).firstDirectionForRoute(anyRoute(), false));
}

TEST(DirectionsFinder, TheFirstDirectionIsTheFirstOfTheList) {
  const auto first = FixedFinder(3).firstDirectionForRoute(anyRoute(), false);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->description(), "1.0,right");
}

TEST(DirectionsFinder, HandsOnWhetherHistoryMayBeUsed) {
  EXPECT_EQ(FixedFinder(1).firstDirectionForRoute(anyRoute(), true)->type(), DirectionsType::left);
}

}  // namespace
}  // namespace KorvaniNavigation
