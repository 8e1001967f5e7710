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

/// How far beside the line a foot may come out, in map points: what the formula of the foot loses
/// of the products of coordinates, half a last digit each, over the length of the edge.
double strayOf(MKMapPoint one, MKMapPoint two, double length) {
  constexpr double kHalfADigit = 0x1p-53;
  constexpr double kRoom = 1.5;  // for the other roundings, which are far smaller
  return kRoom * kHalfADigit * (std::abs(one.y * two.x) + std::abs(one.x * two.y)) / length;
}

/// Whether the foot of a position lies between the ends of an edge, told from the map plane alone;
/// absent where that tells too little: near the ends, on short edges and in the far north.
///
/// It stands in for `coordinateIsBetweenCoordinates` and its three distances on the sphere, which
/// allow the way over the foot to be a thousandth longer than the edge, and half a metre at most.
/// Beyond an end by a hundredth of the edge it is longer by twice that, wherever else the foot
/// comes out. Between the hundredths it is longer by less than the fifty-fold square of how far the
/// foot strays, in parts of the edge; up to a thousandth that is a seventh of what is allowed, or
/// less. From centimetres to a kilometre and a half, short of 80 degrees of latitude, lengths on
/// the map and on the sphere differ in ratio by far less than all of these.
std::optional<bool> isSurelyBetween(MKMapPoint position, MKMapPoint one, MKMapPoint two) {
  constexpr double kShortestEdge = 0.1;  // map points
  constexpr double kLongestEdge = 1e4;
  constexpr double kHighest = 0.388 * KorvaniPlatform::kMKMapWorldSize;  // from the equator
  constexpr double kMargin = 0.01;                                       // of the edge
  constexpr double kMostStray = 0.001;                                   // of the edge
  const double x = two.x - one.x;
  const double y = two.y - one.y;
  const double square = x * x + y * y;
  if (!(square > kShortestEdge * kShortestEdge && square < kLongestEdge * kLongestEdge))
    return std::nullopt;
  if (!(std::abs(one.y - KorvaniPlatform::kMKMapWorldSize / 2) < kHighest)) return std::nullopt;
  const double along = ((position.x - one.x) * x + (position.y - one.y) * y) / square;
  if (along < -kMargin || along > 1 + kMargin) return false;
  const double length = std::sqrt(square);
  const bool isClear = along > kMargin && along < 1 - kMargin;
  if (isClear && strayOf(one, two, length) < kMostStray * length) return true;
  return std::nullopt;
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

std::optional<EdgeFoot> footBetween(CLLocationCoordinate2D nodeOne, CLLocationCoordinate2D nodeTwo,
                                    CLLocationCoordinate2D position) {
  const MKMapPoint place = MKMapPointForCoordinate(position);
  const MKMapPoint one = MKMapPointForCoordinate(nodeOne);
  const MKMapPoint two = MKMapPointForCoordinate(nodeTwo);
  const auto isBetween = isSurelyBetween(place, one, two);
  if (isBetween && !*isBetween) return std::nullopt;
  const MKMapPoint foot = IntersectionFinder::findIntersectionPointForPointOnLine(place, one, two);
  const CLLocationCoordinate2D coordinate = MKCoordinateForMapPoint(foot);
  if (!isBetween &&
      !IntersectionFinder::coordinateIsBetweenCoordinates(coordinate, nodeOne, nodeTwo)) {
    return std::nullopt;
  }
  return EdgeFoot{foot, coordinate};
}

}  // namespace KorvaniNavigation
