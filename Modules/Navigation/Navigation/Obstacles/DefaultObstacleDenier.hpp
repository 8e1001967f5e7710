#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "Navigation/Obstacles/ObstacleDenier.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class KRVNavObstacle;
class KRVNavRegion;
class RegionFinder;

/// Blocks jumps through walls for a while, on a credit that unobstructed positions earn.
///
/// Each position reached without crossing a wall earns 0.5, up to 5; each jump through a wall
/// costs 1 and is blocked while credit remains. So ten clear positions earn full credit, with
/// which four jumps in a row are blocked and the fifth is accepted: by then the person is likely
/// to be on the other side. Somebody who has just come to a level has no credit and is never
/// blocked.
///
/// The walls are those of the region of the new position and of the region of the
/// one before. The region finder reads the graph's regions once, when the denier is made (or,
/// without a graph then, when one is announced): make a new denier for a new building.
///
/// The facade makes no denier of this kind. A host that wants one makes its own check:
///
///     auto denier = std::make_shared<DefaultObstacleDenier>(bundle);
///     auto task = std::make_shared<ObstacleCheckTask>(bundle, true, point, denier, handler);
class KORVANI_API DefaultObstacleDenier : public ObstacleDenier {
 public:
  /// A denier for the bundle `configDependents`, which it does not keep alive.
  explicit DefaultObstacleDenier(std::weak_ptr<ConfigDependents> configDependents);
  ~DefaultObstacleDenier() override;

  /// Fatal error when the configuration is gone and the position is on the level of the last.
  CLLocationCoordinate2D check(const KRVNavPoint& point) override;

  /// The credit, from 0 to 5.
  double stickyCounter() const;

  /// The region of the position checked last; absent before the first.
  std::shared_ptr<KRVNavRegion> lastRegion() const;

  /// What the last check returned, with the position's level; absent before the first.
  std::shared_ptr<KRVNavPoint> lastIndoorLocation() const;

 private:
  bool isBarrierOnTheWayTo(const KRVNavPoint& point, const KRVNavRegion& region) const;
  bool isAccepted(const KRVNavPoint& point, const KRVNavRegion& region);

  const std::weak_ptr<ConfigDependents> configDependents_;
  const std::shared_ptr<RegionFinder> regionFinder_;
  mutable std::mutex mutex_;
  double stickyCounter_ = 0;
  std::shared_ptr<KRVNavRegion> lastRegion_;
  std::shared_ptr<KRVNavPoint> lastIndoorLocation_;
};

}  // namespace KorvaniNavigation
