#pragma once

// Internal. The nodes of a region, laid out so that those in sight of a position are found without
// looking at all of them.
//
//   const auto nodes = RegionNodes::of(*region);
//   for (const ClosestNode& each : nodes->visibleFrom(position, detector)) ...
//
// Made once and kept with the region until its nodes change. Immutable; any number of threads may
// ask it. Making it costs some hundred nanoseconds a node; memory is below 130 bytes a node.

#include <cstddef>
#include <memory>
#include <vector>

#include "Navigation/Localisation/ClosestNode.hpp"
#include "Navigation/Localisation/NodeTree.hpp"
#include "Navigation/Localisation/SpherePlace.hpp"
#include "Navigation/Names.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;
class KRVNavRegion;
class ObstacleDetector;

class RegionNodes {
 public:
  using Points = std::vector<std::shared_ptr<KRVNavPoint>>;

  // The nodes of the region as it is now.
  static std::shared_ptr<const RegionNodes> of(const KRVNavRegion& region);

  explicit RegionNodes(const Points& points);

  // The nodes that no wall of the detector hides from the position, with their distances in metres.
  // Nearest first in degrees, of equal distances the one that was added first, those of a distance
  // that is no number last. Nodes more than kVisibleNodeReach times as far as the nearest of them
  // are left out.
  std::vector<ClosestNode> visibleFrom(CLLocationCoordinate2D position,
                                       const ObstacleDetector& detector) const;

  // Memory that it holds.
  std::size_t bytes() const;

 private:
  std::vector<ClosestNode> testedOneByOne(CLLocationCoordinate2D position,
                                          const ObstacleDetector& detector) const;

  struct Placed {
    std::shared_ptr<KRVNavPoint> node;
    SpherePlace place;
  };

  std::vector<Placed> nodes_;  // in the order in which they were added
  NodeTree tree_;
};

}  // namespace KorvaniNavigation
