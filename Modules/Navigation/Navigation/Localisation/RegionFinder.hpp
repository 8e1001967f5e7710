#pragma once

#include <cstdint>
#include <memory>

#include "Common/CountedArray.hpp"
#include "Common/Guarded.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class KRVNavGraph;
class KRVNavRegion;

/// Finds the region of the building in which a position is to be placed.
///
/// A position belongs to the first region of its level whose rectangle contains it; when there
/// is none, to the nearest region. Callers ask in that order:
///
///     auto region = finder.findRegionContaining(coordinate, level, true);
///     if (!region) region = finder.findRegionCloseTo(coordinate, level, true);
///
/// The finder keeps the list of the provided graph's regions. Without a graph the list is empty,
/// and the finder fills it when `NavigationGraphCreatedNotification` is posted. With
/// `onOriginalGraph` false the regions of the route that is being followed are searched instead,
/// while there is one.
///
/// Ownership: each configuration's `IntersectionFinder` holds one, obstacle checks and route
/// graphs make their own. Must be owned by a `std::shared_ptr`, since it observes notifications.
/// Thread safety: all members may be called from any thread; the list is replaced whole.
class KORVANI_API RegionFinder : public std::enable_shared_from_this<RegionFinder> {
 public:
  using Regions = KorvaniCommon::CountedArray<std::shared_ptr<KRVNavRegion>>;

  /// A finder with an empty list; call `updateRegions()` next.
  explicit RegionFinder(std::weak_ptr<ConfigDependents> configDependents);
  ~RegionFinder();
  RegionFinder(const RegionFinder&) = delete;
  RegionFinder& operator=(const RegionFinder&) = delete;

  /// The list of regions that is searched on the original graph.
  Regions regions() const { return regions_.load(); }
  void setRegions(Regions regions) { regions_.store(std::move(regions)); }

  /// The configuration the finder was made for; absent once that is gone.
  std::shared_ptr<ConfigDependents> configDependents() const { return configDependents_.lock(); }

  /// Reads the regions of the provided graph. Without a graph empties the list and waits for
  /// `NavigationGraphCreatedNotification`.
  void updateRegions();

  /// Reads the regions of the provided graph; without a graph leaves the list as it is. Called
  /// by the notification centre on the thread that posts.
  void graphCreationFinished();

  /// The first region in list order that has the level and whose rectangle, border included,
  /// contains the coordinate; absent when there is none.
  std::shared_ptr<KRVNavRegion> findRegionContaining(CLLocationCoordinate2D coordinate,
                                                     std::int64_t levelNumber,
                                                     bool onOriginalGraph) const;

  /// The region nearest to the coordinate; absent when the list is empty, and for a
  /// coordinate that is not a number when the list begins with a region of the level.
  ///
  /// Among the regions of the level it is the one with the nearest south-west or north-east
  /// corner, in metres; when the level has no region, the one of the nearest level. Ties keep
  /// the region that comes first in the list.
  std::shared_ptr<KRVNavRegion> findRegionCloseTo(CLLocationCoordinate2D coordinate,
                                                  std::int64_t levelNumber,
                                                  bool onOriginalGraph) const;

  /// `findRegionContaining`, and when that gives nothing `findRegionCloseTo`.
  std::shared_ptr<KRVNavRegion> findRegionFor(CLLocationCoordinate2D coordinate,
                                              std::int64_t levelNumber, bool onOriginalGraph) const;

  /// The same among the regions of `routeGraph`, or in the finder's own list when that is null.
  /// For callers that go on with the route's graph: the route may change between two questions.
  std::shared_ptr<KRVNavRegion> findRegionFor(CLLocationCoordinate2D coordinate,
                                              std::int64_t levelNumber,
                                              const std::shared_ptr<KRVNavGraph>& routeGraph) const;

 private:
  Regions regionsToSearch(const std::shared_ptr<KRVNavGraph>& routeGraph) const;

  KorvaniCommon::Guarded<Regions> regions_;
  std::weak_ptr<ConfigDependents> configDependents_;
};

}  // namespace KorvaniNavigation
