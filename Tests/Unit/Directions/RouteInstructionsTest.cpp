#include "Navigation/Directions/RouteInstructions.hpp"

#include <gtest/gtest.h>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::Directions;
using KorvaniNavigation::DirectionsType;
using KorvaniNavigation::RemainingSteps;
using KorvaniNavigation::RouteInstructions;
using KorvaniNavigation::Step;
using Types = std::vector<DirectionsType>;

/// East for 20 m in two steps, north for 10 m, east again for 10 m.
class RouteInstructionsTest : public testing::Test {
 protected:
  static std::vector<DirectionsType> typesOf(const std::vector<Directions>& instructions) {
    std::vector<DirectionsType> types;
    for (const Directions& each : instructions) types.push_back(each.type());
    return types;
  }

  static std::vector<Step> stepsOver(const std::vector<PointPtr>& points) {
    std::vector<Step> steps;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
      steps.emplace_back(points[i], points[i + 1], 10.0);
    }
    return steps;
  }

  std::vector<PointPtr> points{at(0, 0), at(0, 0.0001), at(0, 0.0002), at(0.0001, 0.0002),
                               at(0.0001, 0.0003)};
  RemainingSteps whole{stepsOver(points)};
};

TEST_F(RouteInstructionsTest, OfAWholeRouteAreThoseOfItsRuns) {
  EXPECT_EQ(typesOf(RouteInstructions::of(whole)),
            (Types{DirectionsType::forward, DirectionsType::left, DirectionsType::right,
                   DirectionsType::destination}));
}

TEST_F(RouteInstructionsTest, WithoutStepsAreOneEmptyOne) {
  EXPECT_EQ(typesOf(RouteInstructions::of(RemainingSteps{std::vector<Step>()})),
            Types{DirectionsType::unknown});
}

TEST_F(RouteInstructionsTest, ShareWhatIsSaidOfPlacesToCome) {
  const auto before = RouteInstructions::of(whole);
  const auto left = whole.after(1, Step(at(0, 0.00015), points[2], 5.0));
  const auto after = RouteInstructions::of(*left);
  ASSERT_EQ(typesOf(after),
            (Types{DirectionsType::left, DirectionsType::right, DirectionsType::destination}));
  EXPECT_EQ(after[0].distance(), 5.0);
  EXPECT_EQ(after[1].nextWaypoint(), before[2].nextWaypoint());
}

TEST_F(RouteInstructionsTest, AreMadeAnewWhereTheFirstStepTurnsTheRun) {
  // So far aside that the way to the second step's end is a run of its own.
  const auto left = whole.after(0, Step(at(0.00008, 0.00005), points[1], 10.0));
  EXPECT_EQ(typesOf(RouteInstructions::of(*left)),
            (Types{DirectionsType::left, DirectionsType::left, DirectionsType::right,
                   DirectionsType::destination}));
}

TEST_F(RouteInstructionsTest, AreMadeAnewOnceAPointHasMoved) {
  const auto before = RouteInstructions::of(whole);
  points[3]->setLocation(
      KorvaniNavigation::CLLocation({0.0001, 0.0002}, 7, 0, 0, points[3]->location().timestamp()));
  const auto after = RouteInstructions::of(whole);
  EXPECT_EQ(before[2].arrow()->level, 0);
  EXPECT_EQ(after[2].arrow()->level, 7);
}

TEST_F(RouteInstructionsTest, DoNotMindAPlaceThatIsPassedAndHasNoLevel) {
  points[0]->setLocation(
      KorvaniNavigation::CLLocation({0, 0}, 1e300, 0, 0, points[0]->location().timestamp()));
  const auto left = whole.after(1, Step(at(0, 0.00015), points[2], 5.0));
  EXPECT_EQ(typesOf(RouteInstructions::of(*left)),
            (Types{DirectionsType::left, DirectionsType::right, DirectionsType::destination}));
}

}  // namespace
}  // namespace KorvaniTest
