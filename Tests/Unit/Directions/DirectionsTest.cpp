#include "Navigation/Directions/Directions.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <optional>
#include <string>

#include "Navigation/API/Constants.hpp"
#include "Support/Points.hpp"

using namespace KorvaniNavigation;
using KorvaniTest::at;

namespace {

Dictionary place(double latitude, double longitude, std::int64_t level) {
  return {{"LocationLatitude", latitude},
          {"LocationLongitude", longitude},
          {"LocationAltitude", level}};
}

Directions plain(DirectionsType type, double distance) {
  return Directions(type, distance, nullptr, std::nullopt, std::nullopt);
}

class CommaPoint : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
};

}  // namespace

TEST(Directions, EmptyInstructionIsUnknownAtZeroMetresAndNothingElse) {
  const Directions empty;
  EXPECT_EQ(empty.type(), DirectionsType::unknown);
  EXPECT_EQ(empty.distance(), 0);
  EXPECT_EQ(empty.nextWaypoint(), nullptr);
  EXPECT_FALSE(empty.arrow());
  EXPECT_FALSE(empty.levelChangeTypeName());
}

TEST(Directions, EmptyInstructionHasADictionaryOfTwoEntries) {
  const Dictionary expected{{kKRVIndoorTurnByTurnRouteDirection, 0},
                            {kKRVIndoorTurnByTurnDistanceUntilForNextTurnDirection, 0.0}};
  EXPECT_EQ(Directions().directionsJson(), expected);
}

TEST(Directions, KeepsWhatItWasMadeOf) {
  const auto waypoint = at(1, 2, 3);
  const Directions instruction(DirectionsType::levelUp, 4.5, waypoint,
                               DirectionsArrow{{5, 6}, 7, 8}, "stairs");
  EXPECT_EQ(instruction.type(), DirectionsType::levelUp);
  EXPECT_EQ(instruction.distance(), 4.5);
  EXPECT_EQ(instruction.nextWaypoint(), waypoint);
  ASSERT_TRUE(instruction.arrow());
  EXPECT_EQ(instruction.arrow()->peak, (CLLocationCoordinate2D{5, 6}));
  EXPECT_EQ(instruction.arrow()->heading, 7);
  EXPECT_EQ(instruction.arrow()->level, 8);
  EXPECT_EQ(instruction.levelChangeTypeName(), "stairs");
}

TEST(Directions, DictionaryHasSevenEntriesInOrder) {
  const Directions instruction(DirectionsType::levelUp, 4.5, at(1, 2, 3),
                               DirectionsArrow{{5, 6}, 7, 8}, "stairs");
  const Dictionary expected{{"RouteDirection", 7},
                            {"DistanceUntilForNextTurnDirection", 4.5},
                            {"LevelNumberForNextDirection", 8},
                            {"WaypointInRouteForNextTurnDirection", place(1, 2, 3)},
                            {"DirectionsArrowDisplayLocation", place(5, 6, 8)},
                            {"HeadingForDirectionsArrow", 7.0},
                            {"NeighbourType", "stairs"}};
  EXPECT_EQ(instruction.directionsJson(), expected);
  EXPECT_EQ(instruction.directionsJson().size(), 7U);
}

TEST(Directions, WithoutArrowAndWaypointEveryNumberIsZeroAndTheTypeIsEmptyText) {
  const Dictionary expected{
      {kKRVIndoorTurnByTurnRouteDirection, 9},
      {kKRVIndoorTurnByTurnDistanceUntilForNextTurnDirection, 12.0},
      {kKRVIndoorTurnByTurnLevelNumberForNextDirection, 0},
      {kKRVIndoorTurnByTurnWaypointInRouteForNextTurnDirection, place(0, 0, 0)},
      {kKRVIndoorTurnByTurnDirectionsArrowDisplayLocation, place(0, 0, 0)},
      {kKRVIndoorTurnByTurnHeadingForDirectionsArrow, 0.0},
      {kKRVIndoorTurnByTurnNeighbourType, ""}};
  EXPECT_EQ(plain(DirectionsType::destination, 12).directionsJson(), expected);
}

TEST(Directions, WithArrowButNoWaypointTheWaypointsPlaceRepeatsTheArrows) {
  const Directions instruction(DirectionsType::forward, 1, nullptr,
                               DirectionsArrow{{48.5, 11.5}, 90, -2}, std::nullopt);
  const auto& json = instruction.directionsJson();
  EXPECT_EQ(json.at("WaypointInRouteForNextTurnDirection"), place(48.5, 11.5, -2));
  EXPECT_EQ(json.at("DirectionsArrowDisplayLocation"), place(48.5, 11.5, -2));
}

TEST(Directions, WithWaypointButNoArrowOnlyTheArrowsNumbersAreZero) {
  const Directions instruction(DirectionsType::left, 1, at(48.5, 11.5, 4), std::nullopt,
                               std::nullopt);
  const auto& json = instruction.directionsJson();
  EXPECT_EQ(json.at("WaypointInRouteForNextTurnDirection"), place(48.5, 11.5, 4));
  EXPECT_EQ(json.at("DirectionsArrowDisplayLocation"), place(0, 0, 0));
  EXPECT_EQ(json.at("LevelNumberForNextDirection"), Value(0));
}

TEST(Directions, DictionaryDoesNotFollowAWaypointThatMovesLater) {
  const auto waypoint = at(1, 2, 3);
  const Directions instruction(DirectionsType::left, 1, waypoint, std::nullopt, std::nullopt);
  waypoint->setCoordinate({7, 8});
  waypoint->setLevel(9);
  EXPECT_EQ(instruction.directionsJson().at("WaypointInRouteForNextTurnDirection"), place(1, 2, 3));
}

TEST(Directions, ACopyKeepsItsDictionaryWhenTheOriginalIsReplaced) {
  Directions original(DirectionsType::left, 1, nullptr, std::nullopt, "lift");
  const Directions copy = original;
  original = Directions();
  EXPECT_EQ(copy.directionsJson().size(), 7U);
  EXPECT_EQ(copy.levelChangeTypeName(), "lift");
  EXPECT_EQ(original.directionsJson().size(), 2U);
}

TEST(Directions, DescriptionIsDistanceCommaCaseName) {
  EXPECT_EQ(plain(DirectionsType::left, 12.5).description(), "12.5,left");
}

TEST(Directions, DescriptionOfAWholeDistanceGetsAFractionalPart) {
  EXPECT_EQ(plain(DirectionsType::destination, 12).description(), "12.0,destination");
  EXPECT_EQ(plain(DirectionsType::unknown, 0).description(), "0.0,unknown");
  EXPECT_EQ(plain(DirectionsType::forward, -3).description(), "-3.0,forward");
}

TEST(Directions, DescriptionHasFifteenSignificantDigits) {
  EXPECT_EQ(plain(DirectionsType::left, 0.1 + 0.2).description(), "0.3,left");
  EXPECT_EQ(plain(DirectionsType::left, 1.0 / 3.0).description(), "0.333333333333333,left");
  EXPECT_EQ(plain(DirectionsType::left, 123456789012345.0).description(), "123456789012345.0,left");
}

TEST(Directions, DescriptionWithAnExponentGetsNoFractionalPart) {
  EXPECT_EQ(plain(DirectionsType::left, 1e20).description(), "1e+20,left");
  EXPECT_EQ(plain(DirectionsType::left, 1e-7).description(), "1e-07,left");
}

TEST(Directions, DescriptionOfWhatIsNoFiniteNumberIsItsPlainText) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(plain(DirectionsType::left, infinity).description(), "inf,left");
}

TEST(Directions, DescriptionKeepsItsPointWhenTheHostsLocaleHasAComma) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new CommaPoint));
  EXPECT_EQ(plain(DirectionsType::left, 12.5).description(), "12.5,left");
  std::locale::global(before);
}
