#pragma once

// Internal. What decides whether a position is put onto an edge, and where on it.

#include <optional>

#include "Navigation/Names.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

/// Whether the way from a position over both ends of an edge is so much longer than the way between
/// the ends, in degrees, that the edge leads elsewhere.
bool leadsElsewhere(CLLocationCoordinate2D position, CLLocationCoordinate2D nearEnd,
                    CLLocationCoordinate2D farEnd);

/// Whether the far end is rather reached past the near one than across, so that the near end itself
/// is the better place: what the far end and the length of the edge differ by is at least a fifth
/// of the near end's distance. Both ends' distances from the position and the edge's length in
/// metres.
bool isPastNearEnd(double nearDistance, double farDistance, double edgeLength);

/// A coordinate and where it lies on the map plane, for who asks about several edges.
struct MapPlace {
  explicit MapPlace(CLLocationCoordinate2D place)
      : coordinate(place), point(MKMapPointForCoordinate(place)) {}

  CLLocationCoordinate2D coordinate;
  MKMapPoint point;
};

/// The foot of a position on the line through two nodes, on the map plane, with its coordinate.
struct EdgeFoot {
  MKMapPoint point;
  CLLocationCoordinate2D coordinate;
};

/// Absent when it does not lie between the nodes. Walls are not asked.
std::optional<EdgeFoot> footBetween(const MapPlace& nodeOne, const MapPlace& nodeTwo,
                                    const MapPlace& position);

}  // namespace KorvaniNavigation
