#pragma once

/// A snapper on a building that a test places, with a look at what it remembers.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "Navigation/API/Tasks/IntersectionTask.hpp"
#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Snapping/MagneticPathSnapper.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/PlacedBuilding.hpp"

namespace KorvaniNavigation {

/// What a snapper remembers between two positions.
struct MagneticPathSnapperPeer {
  MagneticPathSnapper& snapper;

  auto& previousIntersection() { return snapper.previousIntersection_; }
  auto& lastCounted() {
    return snapper.lastActuallyCalculatedNearestIntersectionIfDifferentFromMagneticallySnapped_;
  }
  std::int64_t& fallbackCounter() { return snapper.fallbackCounter_; }
  std::shared_ptr<Intersection> magneticSnapping(const KRVNavPoint& point,
                                                 const std::shared_ptr<Intersection>& current) {
    return snapper.magneticSnapping(point, current);
  }
};

}  // namespace KorvaniNavigation

namespace KorvaniTest {

using KorvaniNavigation::EdgeIntersection;
using KorvaniNavigation::Intersection;
using KorvaniNavigation::IntersectionKind;
using KorvaniNavigation::IntersectionTask;
using KorvaniNavigation::SingleNodeIntersection;
using IntersectionPtr = std::shared_ptr<Intersection>;

class SnapperFixture : public FacadeFixture {
 protected:
  SnapperFixture() {
    config().setLevelHeight(0);  // so that distances are ground distances
    config().setActivateMagneticSnapping(true);
  }

  /// Provides the building as it is now.
  void open() { provide(building.graph()); }

  /// Has the configuration know the walls of level 0, as a host does that snaps magnetically.
  void knowWalls() {
    bundle()->intersectionFinder()->setObstacleDetector(
        std::make_shared<KorvaniNavigation::ObstacleDetector>(building.region(0)->obstacles(),
                                                              bundle()));
  }

  static IntersectionPtr onNode(const PointPtr& node) {
    return std::make_shared<SingleNodeIntersection>(node, 0, 0);
  }

  /// A place on the straight run from one node to another, which knows that run.
  static std::shared_ptr<EdgeIntersection> onSegment(const PointPtr& place, const PointPtr& one,
                                                     const PointPtr& two) {
    auto edge = std::make_shared<EdgeIntersection>(0, 0, place, one, two);
    edge->setFoundEnclosingSegmentExtensionNode1(one);
    edge->setFoundEnclosingSegmentExtensionNode2(two);
    return edge;
  }

  PlacedBuilding building;
  KorvaniNavigation::MagneticPathSnapper snapper{bundle()};
  KorvaniNavigation::MagneticPathSnapperPeer memory{snapper};
};

}  // namespace KorvaniTest
