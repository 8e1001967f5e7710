#include "Navigation/Localisation/EdgeFoot.hpp"

#include <gtest/gtest.h>

#include <optional>

#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::EdgeFoot;
using KorvaniNavigation::leadsElsewhere;
using KorvaniNavigation::MapPlace;

std::optional<EdgeFoot> footBetween(CLLocationCoordinate2D one, CLLocationCoordinate2D two,
                                    CLLocationCoordinate2D position) {
  return KorvaniNavigation::footBetween(MapPlace(one), MapPlace(two), MapPlace(position));
}

TEST(FootBetween, AnEdgeDoesNotLeadElsewhereForWhoStandsOnItsNode) {
  EXPECT_FALSE(leadsElsewhere({48, 11}, {48, 11}, {48, 11.001}));
}

TEST(FootBetween, LiesBetweenTheEndsOfAnEdgeBesideThePosition) {
  const auto foot = footBetween({48, 11}, {48, 11.001}, {48.0001, 11.0004});
  ASSERT_TRUE(foot);
  EXPECT_NEAR(foot->coordinate.latitude, 48, 1e-7);
  EXPECT_NEAR(foot->coordinate.longitude, 11.0004, 1e-7);
  EXPECT_FALSE(footBetween({48, 11}, {48, 11.001}, {48.0001, 11.0014}));
}

// A line on the map bends away from the shortest way: over 300 km by so much that the way through
// the foot is longer by more than half a metre.
TEST(FootBetween, IsNotBetweenTheEndsOfAnEdgeSoLongThatTheMapsLineIsADetour) {
  EXPECT_TRUE(footBetween({48, 11}, {48, 11.1}, {48.0001, 11.05}));
  EXPECT_FALSE(footBetween({48, 11}, {48, 15}, {48.0001, 13}));
}

// The map ends at 85 degrees: the foot comes out there, far from both ends.
TEST(FootBetween, IsNotBetweenTheEndsOfAnEdgeBeyondTheMap) {
  for (const double latitude : {87.0, -87.0}) {
    EXPECT_FALSE(footBetween({latitude, 11}, {latitude, 11.01}, {latitude, 11.005}));
  }
  EXPECT_TRUE(footBetween({84, 11}, {84, 11.01}, {84, 11.005}));
}

}  // namespace
}  // namespace KorvaniTest
