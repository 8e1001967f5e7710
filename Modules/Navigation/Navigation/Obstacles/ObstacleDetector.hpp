#pragma once

#include <memory>
#include <vector>

#include "Common/CountedArray.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class KRVNavObstacle;
class RegionNodes;
class WallGrid;
class Walls;

/// Tells whether the straight line between two coordinates crosses a wall, and which ones.
///
/// An obstacle is an open polyline: consecutive coordinates form its edges, and the last is
/// not joined to the first. A closed outline therefore repeats its first coordinate.
///
///     const ObstacleDetector detector(region->obstacles(), configDependents);
///     if (detector.isAnyBarrierInBetween(position, node)) { ... }  // behind a wall
///
/// Lines are straight on the Mercator map plane (`MKMapPointForCoordinate`), which within a
/// building is what a map shows. Touching counts as crossing: a line that ends on a wall, or
/// meets it at the wall's own end, is blocked. A line along a wall is not, nor is a line of
/// no length.
///
/// An obstacle must hold at least one coordinate: testing one that holds none, or a null
/// obstacle, is a fatal error. One with a single coordinate blocks nothing.
///
/// Cost: once a list has been asked about a few times, a test looks at the walls near the line
/// only, however many there are. Making a detector over a region's list, or a copy of it, costs
/// nothing then: all such detectors share what was prepared.
///
/// Thread safety: the tests may run on any number of threads as long as nobody calls
/// `setObstacles` or changes an obstacle. The detector shares the obstacles with their region.
class KORVANI_API ObstacleDetector {
 public:
  using Obstacles = KorvaniCommon::CountedArray<std::shared_ptr<KRVNavObstacle>>;

  /// A detector over `obstacles`, made for the bundle `configDependents`, which it does not
  /// keep alive.
  ObstacleDetector(const Obstacles& obstacles, std::weak_ptr<ConfigDependents> configDependents);
  ~ObstacleDetector();
  ObstacleDetector(const ObstacleDetector&) = default;
  ObstacleDetector& operator=(const ObstacleDetector&) = default;

  /// The obstacles that are tested, in this order.
  const Obstacles& obstacles() const { return obstacles_; }
  void setObstacles(Obstacles obstacles);

  /// The bundle this detector was made for; null when it is gone.
  std::shared_ptr<ConfigDependents> configDependents() const { return configDependents_.lock(); }

  /// True as soon as one obstacle, in list order, is crossed; those after it are not looked
  /// at. False for an empty list. Coordinates that are not numbers are never blocked.
  bool isAnyBarrierInBetween(CLLocationCoordinate2D coordinateA,
                             CLLocationCoordinate2D coordinateB) const;

  /// Every crossed obstacle, in list order; empty when there is none.
  std::vector<std::shared_ptr<KRVNavObstacle>> detectBarriersBetween(
      CLLocationCoordinate2D coordinateA, CLLocationCoordinate2D coordinateB) const;

  /// The test for one obstacle, which need not be one of `obstacles`. Cost: one projection
  /// for each coordinate and a few multiplications for each edge.
  bool barrierIsInBetween(const KRVNavObstacle& obstacle, CLLocationCoordinate2D coordinateA,
                          CLLocationCoordinate2D coordinateB) const;

 private:
  friend class RegionNodes;

  bool isAnyBarrierInBetweenAtFirst(CLLocationCoordinate2D coordinateA,
                                    CLLocationCoordinate2D coordinateB) const;
  const Walls& walls(std::shared_ptr<const Walls>& held) const;
  const WallGrid* grid(std::shared_ptr<const Walls>& held) const;
  const WallGrid* gridNow(std::shared_ptr<const Walls>& held) const;

  Obstacles obstacles_;
  std::shared_ptr<const Walls> walls_;
  std::weak_ptr<ConfigDependents> configDependents_;
};

}  // namespace KorvaniNavigation
