#pragma once

/// A position mapper on the provided graph of a building that a test places.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/PlacedBuilding.hpp"

namespace KorvaniTest {

using KorvaniNavigation::asEdge;
using KorvaniNavigation::ClosestNode;
using KorvaniNavigation::EdgeIntersection;
using KorvaniNavigation::Intersection;
using KorvaniNavigation::IntersectionKind;
using KorvaniNavigation::PositionMapper;

/// Metres by which the foot of a perpendicular may miss its edge: the map plane's numbers are
/// large, and a few of their digits cancel out.
inline constexpr double kFootPrecision = 0.005;

/// sqrt(dLat^2 + dLon^2), in degrees.
inline double degreesBetween(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  const double latitude = a.latitude - b.latitude;
  const double longitude = a.longitude - b.longitude;
  return std::sqrt(latitude * latitude + longitude * longitude);
}

inline double metresBetween(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  return KorvaniPlatform::greatCircleDistance(a, b);
}

class MapperFixture : public FacadeFixture {
 protected:
  /// Provides the building as it is now.
  void open() { provide(building.graph()); }

  /// The nodes of level 0 near a position, against the walls of level 0.
  std::vector<ClosestNode> closest(const PointPtr& position) {
    mapper.useWallsOf(building.region(0));
    return mapper.findClosestNodes(*building.region(0), *position);
  }
  std::vector<PointPtr> closest(const PointPtr& position, std::size_t maximumCount) {
    mapper.useWallsOf(building.region(0));
    return mapper.findClosestNodes(*building.region(0), *position, maximumCount);
  }

  static std::vector<PointPtr> nodesOf(const std::vector<ClosestNode>& candidates) {
    std::vector<PointPtr> nodes;
    for (const ClosestNode& candidate : candidates) nodes.push_back(candidate.node);
    return nodes;
  }

  PlacedBuilding building;
  PositionMapper mapper{bundle(), true};
};

/// Whether a place is that node itself.
inline testing::AssertionResult isNode(const std::shared_ptr<Intersection>& place,
                                       const PointPtr& node) {
  if (!place) return testing::AssertionFailure() << "there is no intersection";
  if (place->kind() != IntersectionKind::node) {
    return testing::AssertionFailure() << "the intersection is not on a node";
  }
  if (place->node() != node) {
    return testing::AssertionFailure()
           << "it is on node " << place->node()->identifier() << ", " << place->distance()
           << " m away, and not on node " << node->identifier();
  }
  return testing::AssertionSuccess();
}

/// Whether a place is on the edge from one node to another, in this order.
inline testing::AssertionResult isOnEdge(const std::shared_ptr<Intersection>& place,
                                         const PointPtr& one, const PointPtr& two) {
  if (!place) return testing::AssertionFailure() << "there is no intersection";
  const auto edge = asEdge(place);
  if (!edge) {
    return testing::AssertionFailure()
           << "it is on node " << place->node()->identifier() << " and not on an edge";
  }
  if (edge->enclosingNodeOne() != one || edge->enclosingNodeTwo() != two) {
    return testing::AssertionFailure()
           << "it is on the edge from node " << edge->enclosingNodeOne()->identifier() << " to "
           << edge->enclosingNodeTwo()->identifier();
  }
  return testing::AssertionSuccess();
}

}  // namespace KorvaniTest
