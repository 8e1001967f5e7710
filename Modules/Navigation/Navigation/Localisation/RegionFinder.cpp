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

RegionFinder::Regions RegionFinder::regionsToSearch(bool onOriginalGraph) const {
  if (!onOriginalGraph) {
    if (const auto routeGraph = graphSource().graphForActiveRoute()) {
      return std::as_const(*routeGraph).regions();
    }
  }
  return regions();
}

std::shared_ptr<KRVNavRegion> RegionFinder::findRegionContaining(CLLocationCoordinate2D coordinate,
                                                                 std::int64_t levelNumber,
                                                                 bool onOriginalGraph) const {
  for (const auto& region : regionsToSearch(onOriginalGraph)) {
    if (region->level() != levelNumber) continue;
    if (GeoPolygonChecker::isCoordinate(
            coordinate, {region->northEastCoordinate(), region->southWestCoordinate()})) {
      return region;
    }
  }
  return nullptr;
}

std::shared_ptr<KRVNavRegion> RegionFinder::findRegionCloseTo(CLLocationCoordinate2D coordinate,
                                                              std::int64_t levelNumber,
                                                              bool onOriginalGraph) const {
  std::shared_ptr<KRVNavRegion> best;
  double bestLevelGap = std::numeric_limits<double>::max();
  double bestDistance = std::numeric_limits<double>::max();
  for (const auto& region : regionsToSearch(onOriginalGraph)) {
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

std::shared_ptr<KRVNavRegion> RegionFinder::findRegionFor(CLLocationCoordinate2D coordinate,
                                                          std::int64_t levelNumber,
                                                          bool onOriginalGraph) const {
  auto region = findRegionContaining(coordinate, levelNumber, onOriginalGraph);
  if (!region) region = findRegionCloseTo(coordinate, levelNumber, onOriginalGraph);
  return region;
}

}  // namespace KorvaniNavigation
