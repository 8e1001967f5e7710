#include "Navigation/Localisation/RegionFinder.hpp"

#include <limits>
#include <utility>

#include "Common/GeoPolygonChecker.hpp"
#include "Navigation/API/Constants.hpp"
#include "Navigation/Graph/GraphSource.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Platform/Location.hpp"
#include "Platform/NotificationCenter.hpp"

namespace KorvaniNavigation {

using KorvaniCommon::GeoPolygonChecker;
using KorvaniPlatform::greatCircleDistance;
using KorvaniPlatform::NotificationCenter;

namespace {

/// Number of levels between two levels, which may lie at the ends of the integer range.
double levelGap(std::int64_t a, std::int64_t b) {
  const auto low = static_cast<std::uint64_t>(a < b ? a : b);
  const auto high = static_cast<std::uint64_t>(a < b ? b : a);
  return static_cast<double>(high - low);
}

/// The graph of the route that is followed; absent without one, or when it is not wanted.
std::shared_ptr<KRVNavGraph> routeGraphUnless(bool onOriginalGraph) {
  return onOriginalGraph ? nullptr : graphSource().graphForActiveRoute();
}

std::shared_ptr<KRVNavRegion> regionContaining(const RegionFinder::Regions& regions,
                                               CLLocationCoordinate2D coordinate,
                                               std::int64_t levelNumber) {
  for (const auto& region : regions) {
    if (region->level() != levelNumber) continue;
    if (GeoPolygonChecker::isCoordinate(
            coordinate, {region->northEastCoordinate(), region->southWestCoordinate()})) {
      return region;
    }
  }
  return nullptr;
}

std::shared_ptr<KRVNavRegion> regionCloseTo(const RegionFinder::Regions& regions,
                                            CLLocationCoordinate2D coordinate,
                                            std::int64_t levelNumber) {
  std::shared_ptr<KRVNavRegion> best;
  double bestLevelGap = std::numeric_limits<double>::max();
  double bestDistance = std::numeric_limits<double>::max();
  for (const auto& region : regions) {
    if (region->level() != levelNumber) {
      const double gap = levelGap(levelNumber, region->level());
      if (gap < bestLevelGap) {
        best = region;
        bestLevelGap = gap;
      }
      continue;
    }
    const auto consider = [&](CLLocationCoordinate2D corner) {
      const double distance = greatCircleDistance(coordinate, corner);
      if (!(distance < bestDistance)) return false;
      best = region;
      bestDistance = distance;
      return true;
    };
    if (!consider(region->southWestCoordinate())) consider(region->northEastCoordinate());
    // From here on no region of another level can win: no gap is smaller than none.
    bestLevelGap = 0;
  }
  return best;
}

}  // namespace

RegionFinder::RegionFinder(std::weak_ptr<ConfigDependents> configDependents)
    : configDependents_(std::move(configDependents)) {}

RegionFinder::~RegionFinder() { NotificationCenter::defaultCenter().removeObserver(this); }

void RegionFinder::updateRegions() {
  if (const auto graph = graphSource().graph()) {
    setRegions(std::as_const(*graph).regions());
    return;
  }
  setRegions({});
  NotificationCenter::defaultCenter().addObserver(
      shared_from_this(), &RegionFinder::graphCreationFinished, NavigationGraphCreatedNotification);
}

void RegionFinder::graphCreationFinished() {
  if (const auto graph = graphSource().graph()) setRegions(std::as_const(*graph).regions());
}

RegionFinder::Regions RegionFinder::regionsToSearch(
    const std::shared_ptr<KRVNavGraph>& routeGraph) const {
  return routeGraph ? std::as_const(*routeGraph).regions() : regions();
}

std::shared_ptr<KRVNavRegion> RegionFinder::findRegionContaining(CLLocationCoordinate2D coordinate,
                                                                 std::int64_t levelNumber,
                                                                 bool onOriginalGraph) const {
  return regionContaining(regionsToSearch(routeGraphUnless(onOriginalGraph)), coordinate,
                          levelNumber);
}

std::shared_ptr<KRVNavRegion> RegionFinder::findRegionCloseTo(CLLocationCoordinate2D coordinate,
                                                              std::int64_t levelNumber,
                                                              bool onOriginalGraph) const {
  return regionCloseTo(regionsToSearch(routeGraphUnless(onOriginalGraph)), coordinate, levelNumber);
}

std::shared_ptr<KRVNavRegion> RegionFinder::findRegionFor(CLLocationCoordinate2D coordinate,
                                                          std::int64_t levelNumber,
                                                          bool onOriginalGraph) const {
  return findRegionFor(coordinate, levelNumber, routeGraphUnless(onOriginalGraph));
}

std::shared_ptr<KRVNavRegion> RegionFinder::findRegionFor(
    CLLocationCoordinate2D coordinate, std::int64_t levelNumber,
    const std::shared_ptr<KRVNavGraph>& routeGraph) const {
  const Regions regions = regionsToSearch(routeGraph);
  auto region = regionContaining(regions, coordinate, levelNumber);
  if (!region) region = regionCloseTo(regions, coordinate, levelNumber);
  return region;
}

}  // namespace KorvaniNavigation
