#include "Navigation/Localisation/EdgeFoot.hpp"

#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Localisation/NodeTree.hpp"

namespace KorvaniNavigation {

namespace {

/// An edge may lead about by at most this many times the distance of its near end, in degrees.
constexpr double kLongestDetour = 2.5;
/// A way through an edge's far end may be this many times longer than the way to the near one.
constexpr double kDetourFactor = 1.2;

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
  const MKMapPoint foot = IntersectionFinder::findIntersectionPointForPointOnLine(
      MKMapPointForCoordinate(position), MKMapPointForCoordinate(nodeOne),
      MKMapPointForCoordinate(nodeTwo));
  const CLLocationCoordinate2D coordinate = MKCoordinateForMapPoint(foot);
  if (!IntersectionFinder::coordinateIsBetweenCoordinates(coordinate, nodeOne, nodeTwo)) {
    return std::nullopt;
  }
  return EdgeFoot{foot, coordinate};
}

}  // namespace KorvaniNavigation
