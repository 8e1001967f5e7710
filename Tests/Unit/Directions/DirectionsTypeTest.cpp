#include "Navigation/Directions/DirectionsType.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string_view>
#include <utility>
#include <vector>

using KorvaniNavigation::DirectionsType;
using KorvaniNavigation::directionsTypeFromRawValue;
using KorvaniNavigation::nameOf;
using KorvaniNavigation::rawValueOf;

namespace {

const std::vector<std::pair<DirectionsType, std::string_view>>& casesInOrder() {
  static const std::vector<std::pair<DirectionsType, std::string_view>> cases{
      {DirectionsType::unknown, "unknown"},
      {DirectionsType::forward, "forward"},
      {DirectionsType::left, "left"},
      {DirectionsType::right, "right"},
      {DirectionsType::turnaround, "turnaround"},
      {DirectionsType::bearLeft, "bearLeft"},
      {DirectionsType::bearRight, "bearRight"},
      {DirectionsType::levelUp, "levelUp"},
      {DirectionsType::levelDown, "levelDown"},
      {DirectionsType::destination, "destination"},
  };
  return cases;
}

}  // namespace

TEST(DirectionsType, RawValueIsTheCasesPosition) {
  ASSERT_EQ(casesInOrder().size(), 10U);
  for (std::size_t i = 0; i < casesInOrder().size(); ++i) {
    EXPECT_EQ(rawValueOf(casesInOrder()[i].first), static_cast<std::int64_t>(i));
  }
}

TEST(DirectionsType, EveryRawValueFrom0To9GivesItsCase) {
  for (const auto& each : casesInOrder()) {
    EXPECT_EQ(directionsTypeFromRawValue(rawValueOf(each.first)), each.first);
  }
}

TEST(DirectionsType, RawValue9GivesDestination) {
  EXPECT_EQ(directionsTypeFromRawValue(9), DirectionsType::destination);
}

TEST(DirectionsType, RawValues10AndMinus1DoNotExist) {
  EXPECT_FALSE(directionsTypeFromRawValue(10));
  EXPECT_FALSE(directionsTypeFromRawValue(-1));
}

TEST(DirectionsType, FarRawValuesDoNotExist) {
  EXPECT_FALSE(directionsTypeFromRawValue(std::numeric_limits<std::int64_t>::max()));
  EXPECT_FALSE(directionsTypeFromRawValue(std::numeric_limits<std::int64_t>::min()));
  EXPECT_FALSE(directionsTypeFromRawValue(std::int64_t{1} << 32));
}

TEST(DirectionsType, NameIsTheCasesName) {
  for (const auto& each : casesInOrder()) EXPECT_EQ(nameOf(each.first), each.second);
}

TEST(DirectionsType, HashIsTheRawValue) {
  for (const auto& each : casesInOrder()) {
    EXPECT_EQ(std::hash<DirectionsType>{}(each.first),
              static_cast<std::size_t>(rawValueOf(each.first)));
  }
}
