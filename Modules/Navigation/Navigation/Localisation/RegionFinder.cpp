#include "Navigation/Localisation/RegionFinder.hpp"

#include <utility>

#include "Navigation/API/Constants.hpp"
#include "Navigation/Graph/GraphSource.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Localisation/RegionSearch.hpp"
#include "Platform/NotificationCenter.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::NotificationCenter;

namespace {

/// The graph of the route that is followed; absent without one, or when it is not wanted.
std::shared_ptr<KRVNavGraph> routeGraphUnless(bool onOriginalGraph) {
  return onOriginalGraph ? nullptr : graphSource().graphForActiveRoute();
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
  return regionFor(regionsToSearch(routeGraph), coordinate, levelNumber);
}

}  // namespace KorvaniNavigation
