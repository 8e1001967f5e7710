// Where most cases are decided without trigonometry, the plain formulas decide them again: feet of
// positions on edges, and corners that are cut.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Common/KorvaniCommonHelpers.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Localisation/EdgeFoot.hpp"
#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Routing/RouteOptimisation.hpp"
#include "SeededNumbers.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniCommon::KorvaniCommonHelpers;
using KorvaniNavigation::footBetween;
using KorvaniNavigation::IntersectionFinder;
using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::MapPlace;
using KorvaniNavigation::MKCoordinateForMapPoint;
using KorvaniNavigation::MKMapPointForCoordinate;
using KorvaniNavigation::ObstacleDetector;
using KorvaniNavigation::RouteEdge;

using Edges = KorvaniNavigation::Edges;

constexpr std::uint64_t kFeet = 300'000;
constexpr std::uint64_t kWays = 20'000;

CLLocationCoordinate2D somewhere(SeededNumbers& numbers) {
  constexpr double kLatitudes[] = {48.1, 48.1, 0.0, -33.9, 65.0, 79.99, 80.01, 84.9, -85.0};
  constexpr double kLongitudes[] = {11.5, -179.9999, 179.9999, 0.0};
  return {kLatitudes[numbers.below(9)], kLongitudes[numbers.below(4)]};
}

// From a millimetre to some kilometres away, most often some metres.
CLLocationCoordinate2D near(CLLocationCoordinate2D place, SeededNumbers& numbers) {
  const double reach = numbers.chance(0.7) ? 10.0 : std::pow(10.0, numbers.unit() * 7 - 3);
  const double north = (numbers.unit() - 0.5) * 2 * reach;
  const double east = (numbers.unit() - 0.5) * 2 * reach;
  return moved(place, numbers.chance(0.1) ? 0 : north, numbers.chance(0.1) ? 0 : east);
}

std::optional<CLLocationCoordinate2D> plainFoot(CLLocationCoordinate2D one,
                                                CLLocationCoordinate2D two,
                                                CLLocationCoordinate2D position) {
  const auto coordinate =
      MKCoordinateForMapPoint(IntersectionFinder::findIntersectionPointForPointOnLine(
          MKMapPointForCoordinate(position), MKMapPointForCoordinate(one),
          MKMapPointForCoordinate(two)));
  if (!IntersectionFinder::coordinateIsBetweenCoordinates(coordinate, one, two)) return {};
  return coordinate;
}

// Short edges, whose feet stray most beside them, and positions about as far along as decides.
TEST(EdgeFootSeeds, AreWhereThePlainFormulaPutsThemNearTheEndsOfShortEdges) {
  SeededNumbers numbers(13);
  std::uint64_t found = 0;
  for (std::uint64_t i = 0; i < kFeet && !testing::Test::HasFailure(); ++i) {
    const CLLocationCoordinate2D one = moved(somewhere(numbers), numbers.unit() * 900, 0);
    const double length = 0.5 + numbers.unit() * 8;
    const double heading = numbers.unit() * 6.3;
    const double share = (numbers.chance(0.5) ? 1 : 0) + (numbers.unit() - 0.5) * 0.03;
    const double aside = (numbers.unit() - 0.5) * 0.02 * length;
    const auto along = [&](double metres, double beside) {
      return moved(one, metres * std::cos(heading) - beside * std::sin(heading),
                   metres * std::sin(heading) + beside * std::cos(heading));
    };
    const CLLocationCoordinate2D two = along(length, 0);
    const CLLocationCoordinate2D position = along(share * length, aside);
    const auto actual = footBetween(MapPlace(one), MapPlace(two), MapPlace(position));
    const auto expected = plainFoot(one, two, position);
    ASSERT_EQ(actual.has_value(), expected.has_value()) << "foot " << i;
    if (expected) ++found;
  }
  EXPECT_GT(found, kFeet / 10);
  EXPECT_LT(found, kFeet * 9 / 10);
}

TEST(EdgeFootSeeds, AreWhereThePlainFormulaPutsThem) {
  SeededNumbers numbers(11);
  std::uint64_t found = 0;
  for (std::uint64_t i = 0; i < kFeet && !testing::Test::HasFailure(); ++i) {
    const CLLocationCoordinate2D one = somewhere(numbers);
    const CLLocationCoordinate2D two = near(one, numbers);
    CLLocationCoordinate2D position = near(one, numbers);
    if (numbers.chance(0.5)) {  // beside the edge, from a little before its start to behind its end
      const double share = numbers.unit() * 1.1 - 0.05;
      position = moved({one.latitude + share * (two.latitude - one.latitude),
                        one.longitude + share * (two.longitude - one.longitude)},
                       numbers.unit() * 0.1, 0);
    }
    const auto actual = footBetween(MapPlace(one), MapPlace(two), MapPlace(position));
    const auto expected = plainFoot(one, two, position);
    ASSERT_EQ(actual.has_value(), expected.has_value()) << "foot " << i;
    if (!expected) continue;
    ++found;
    EXPECT_EQ(actual->coordinate, *expected) << "foot " << i;
  }
  EXPECT_GT(found, kFeet / 10);
  EXPECT_LT(found, kFeet * 9 / 10);
}

std::optional<RouteEdge> plainShortcut(const RouteEdge& edge, const RouteEdge& next,
                                       const ObstacleDetector& walls) {
  const auto a = edge.start;
  const auto b = next.start;
  const auto c = next.end;
  const double distance = a->location().distanceFromLocation(c->location());
  const double turn = KorvaniCommonHelpers::clockwiseAngleBetweenLines(
      a->coordinate(), b->coordinate(), b->coordinate(), c->coordinate());
  if (a->level() != c->level() || distance > 20 || std::abs(turn) < 20) return std::nullopt;
  if (walls.isAnyBarrierInBetween(a->coordinate(), c->coordinate())) return std::nullopt;
  RouteEdge cut = edge;
  cut.end = c;
  cut.distance = distance;
  return cut;
}

Edges plainlyCut(const Edges& edges, const ObstacleDetector& walls) {
  Edges backwards;
  for (std::size_t i = edges.size(); i-- > 0;) {
    const auto cut =
        backwards.empty() ? std::nullopt : plainShortcut(edges[i], backwards.back(), walls);
    if (cut) backwards.pop_back();
    backwards.push_back(cut.value_or(edges[i]));
  }
  std::reverse(backwards.begin(), backwards.end());
  return backwards;
}

// A way of steps that turn by all angles, often by about as much as decides.
Edges seededWay(SeededNumbers& numbers) {
  Edges edges;
  double heading = numbers.unit() * 6.3;
  PointPtr last = at(somewhere(numbers));
  for (std::uint32_t i = 2 + numbers.below(8); i > 0; --i) {
    const double reach = numbers.chance(0.9) ? 12 : std::pow(10.0, numbers.unit() * 7 - 3);
    const double length = numbers.unit() * reach;
    const PointPtr next =
        at(moved(last->coordinate(), length * std::cos(heading), length * std::sin(heading)),
           numbers.chance(0.95) ? last->level() : last->level() + 1);
    edges.emplace_back(KRVNavEdge(last, next, length, 1.0 + i, i % 2 == 0, std::to_string(i)));
    heading +=
        numbers.chance(0.5) ? (numbers.unit() - 0.5) * 6.3 : 0.349 + (numbers.unit() - 0.5) * 0.1;
    last = next;
  }
  return edges;
}

TEST(CornersSeeds, AreCutWhereThePlainFormulaCutsThem) {
  SeededNumbers numbers(12);
  std::size_t cutCount = 0;
  std::size_t edgeCount = 0;
  for (std::uint64_t i = 0; i < kWays && !testing::Test::HasFailure(); ++i) {
    const auto edges = seededWay(numbers);
    const auto from = edges[edges.size() / 2].start->coordinate();
    const ObstacleDetector walls(
        {std::make_shared<KRVNavObstacle>(
            std::vector<CLLocationCoordinate2D>{near(from, numbers), near(from, numbers)})},
        {});
    const auto actual = cutCorners(edges, walls);
    const auto expected = plainlyCut(edges, walls);
    ASSERT_EQ(actual.size(), expected.size()) << "way " << i;
    for (std::size_t k = 0; k < actual.size(); ++k) {
      EXPECT_EQ(actual[k], expected[k]) << "way " << i;
    }
    edgeCount += edges.size();
    cutCount += edges.size() - actual.size();
  }
  EXPECT_GT(cutCount, edgeCount / 10);
  EXPECT_LT(cutCount, edgeCount * 9 / 10);
}

}  // namespace
}  // namespace KorvaniTest
