#include "Navigation/Localisation/EdgeFoot.hpp"

#include <cmath>

#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Localisation/NodeTree.hpp"

namespace KorvaniNavigation {

namespace {

/// An edge may lead about by at most this many times the distance of its near end, in degrees.
constexpr double kLongestDetour = 2.5;
/// A way through an edge's far end may be this many times longer than the way to the near one.
constexpr double kDetourFactor = 1.2;

/// How far beside the line a foot may come out, in map points, times the length of the edge: what
/// the formula of the foot loses of the products of coordinates, half a last digit each.
double strayOf(MKMapPoint one, MKMapPoint two) {
  constexpr double kHalfADigit = 0x1p-53;
  // For the other roundings, which are far smaller unless the stray is next to nothing.
  constexpr double kRoom = 1.5;
  return kRoom * kHalfADigit * (std::abs(one.y * two.x) + std::abs(one.x * two.y));
}

/// Whether the foot of a position lies between the ends of an edge, told from the map plane alone;
/// absent where that tells too little: near the ends, on short edges and in the far north.
///
/// It stands in for `coordinateIsBetweenCoordinates` and its three distances on the sphere, which
/// allow the way over the foot to be a thousandth longer than the edge, and half a metre at most.
/// Beyond an end by a hundredth of the edge it is longer by twice that, wherever else the foot
/// comes out. Between the hundredths, where the foot lies the part t along and strays by the part s
/// of the edge, it is longer by the part s * s / (2 * t * (1 - t)) at most; as long as that is a
/// twenty-thousandth it is a sixth of what is allowed, or less. From centimetres to a kilometre and
/// a half, short of 80 degrees of latitude, lengths on the map and on the sphere differ in ratio by
/// far less than all of these.
std::optional<bool> isSurelyBetween(MKMapPoint position, MKMapPoint one, MKMapPoint two) {
  constexpr double kShortestEdge = 0.1;  // map points
  constexpr double kLongestEdge = 1e4;
  constexpr double kHighest = 0.388 * KorvaniPlatform::kMKMapWorldSize;  // from the equator
  constexpr double kMargin = 0.01;                                       // of the edge
  constexpr double kMostDetour = 5e-5;                                   // of the edge
  const double x = two.x - one.x;
  const double y = two.y - one.y;
  const double square = x * x + y * y;
  if (!(square > kShortestEdge * kShortestEdge && square < kLongestEdge * kLongestEdge))
    return std::nullopt;
  if (!(std::abs(one.y - KorvaniPlatform::kMKMapWorldSize / 2) < kHighest)) return std::nullopt;
  const double along = ((position.x - one.x) * x + (position.y - one.y) * y) / square;
  if (along < -kMargin || along > 1 + kMargin) return false;
  const bool isClear = along > kMargin && along < 1 - kMargin;
  const double stray = strayOf(one, two);  // times the length
  const bool isOnLine = stray * stray < kMostDetour * 2 * along * (1 - along) * square * square;
  return isClear && isOnLine ? std::optional(true) : std::nullopt;
}

}  // namespace

bool leadsElsewhere(CLLocationCoordinate2D position, CLLocationCoordinate2D nearEnd,
                    CLLocationCoordinate2D farEnd) {
  const double toNode = degreeDistance(position, nearEnd);
  const double detour = degreeDistance(nearEnd, position) + degreeDistance(position, farEnd) -
                        degreeDistance(nearEnd, farEnd);
  return detour > kLongestDetour * toNode;
}

bool isPastNearEnd(double nearDistance, double farDistance, double edgeLength) {
  return nearDistance * kDetourFactor <= nearDistance + farDistance - edgeLength;
}

std::optional<EdgeFoot> footBetween(const MapPlace& nodeOne, const MapPlace& nodeTwo,
                                    const MapPlace& position) {
  const auto isBetween = isSurelyBetween(position.point, nodeOne.point, nodeTwo.point);
  if (isBetween && !*isBetween) return std::nullopt;
  const MKMapPoint foot = IntersectionFinder::findIntersectionPointForPointOnLine(
      position.point, nodeOne.point, nodeTwo.point);
  const CLLocationCoordinate2D coordinate = MKCoordinateForMapPoint(foot);
  if (!isBetween && !IntersectionFinder::coordinateIsBetweenCoordinates(
                        coordinate, nodeOne.coordinate, nodeTwo.coordinate)) {
    return std::nullopt;
  }
  return EdgeFoot{foot, coordinate};
}

}  // namespace KorvaniNavigation
