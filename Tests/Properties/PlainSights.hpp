#pragma once

/// The nodes in sight of a position in the plain way: all of them sorted by distance, and each
/// compared with all walls. What the engine does in other ways has to give the same.

#include <cstdint>
#include <vector>

#include "Navigation/Obstacles/WallGrid.hpp"
#include "Platform/Location.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniTest {

class PlainSights {
 public:
  PlainSights(std::vector<KorvaniPlatform::CLLocationCoordinate2D> nodes,
              std::vector<KorvaniNavigation::WallEdge> walls);

  /// Places in the list of nodes: nearest first, of equal distances in their order, up to 2.5 times
  /// the distance of the nearest; those of a distance that is no number last.
  std::vector<std::uint32_t> from(KorvaniPlatform::CLLocationCoordinate2D position) const;

 private:
  bool isHidden(KorvaniPlatform::MKMapPoint from, KorvaniPlatform::MKMapPoint to) const;

  std::vector<KorvaniPlatform::CLLocationCoordinate2D> nodes_;
  std::vector<KorvaniPlatform::MKMapPoint> points_;
  std::vector<KorvaniNavigation::WallEdge> walls_;
};

}  // namespace KorvaniTest
