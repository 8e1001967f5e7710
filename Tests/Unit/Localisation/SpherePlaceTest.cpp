#include "Navigation/Localisation/SpherePlace.hpp"

#include <gtest/gtest.h>

#include <random>

#include "Support/Points.hpp"

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::SpherePlace;
using KorvaniTest::kNotANumber;

namespace {

double between(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  return greatCircleDistance(SpherePlace(a), SpherePlace(b));
}

}  // namespace

TEST(SpherePlace, DistancesAreThoseOfTheCoordinatesToTheLastBit) {
  std::mt19937 chance(3);
  const auto part = [&] { return static_cast<double>(chance()) / 4294967296.0 - 0.5; };
  for (int i = 0; i < 20000; ++i) {
    const CLLocationCoordinate2D a{180 * part(), 360 * part()};
    const double reach = i % 3 == 0 ? 100 : 1e-4;
    const CLLocationCoordinate2D b{a.latitude + reach * part(), a.longitude + reach * part()};
    ASSERT_EQ(between(a, b), KorvaniPlatform::greatCircleDistance(a, b));
  }
}

TEST(SpherePlace, OppositePlacesAreHalfTheGirthApart) {
  const CLLocationCoordinate2D a{0, 0};
  const CLLocationCoordinate2D b{0, 180};
  EXPECT_EQ(between(a, b), KorvaniPlatform::greatCircleDistance(a, b));
}

TEST(SpherePlace, WhatIsNotANumberHasNoDistance) {
  EXPECT_TRUE(std::isnan(between({kNotANumber, 11}, {48, 11})));
  EXPECT_TRUE(std::isnan(between({48, 11}, {48, kNotANumber})));
}
