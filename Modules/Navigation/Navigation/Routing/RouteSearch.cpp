#include "Navigation/Routing/RouteSearch.hpp"

#include <utility>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::mainQueue;

namespace {

constexpr std::size_t kNodesPerDestination = 4;

}  // namespace

SearchStart searchStartOf(const std::shared_ptr<Intersection>& intersection) {
  if (const auto onEdge = asEdge(intersection)) {
    return {{onEdge->enclosingNodeOne(), onEdge->enclosingNodeTwo()},
            {onEdge->distanceEnclosingNodeOne(), onEdge->distanceEnclosingNodeTwo()}};
  }
  return {{intersection->node()}, {intersection->distance()}};
}

std::vector<std::shared_ptr<KRVNavPoint>> destinationNodes(
    const std::vector<std::shared_ptr<KRVNavPoint>>& possibleDestinations,
    const std::weak_ptr<ConfigDependents>& configuration, PositionMapper& mapper,
    DestinationWalls walls) {
  const auto regionFinder = regionFinderOf(configuration);
  const auto held = mapper.obstacleDetector();
  std::vector<std::shared_ptr<KRVNavPoint>> nodes;
  nodes.reserve(possibleDestinations.size() * 2);  // most lie next to one or two
  for (const auto& destination : possibleDestinations) {
    const auto region =
        regionFinder->findRegionFor(destination->coordinate(), destination->level(), true);
    if (!region) KORVANI_FATAL("a destination has no region");
    if (walls == DestinationWalls::own) mapper.useWallsOf(region);
    const auto near = mapper.findClosestNodes(*region, *destination, kNodesPerDestination);
    nodes.insert(nodes.end(), near.begin(), near.end());
  }
  if (walls == DestinationWalls::own) mapper.setObstacleDetector(held);
  return nodes;
}

SearchTimeLimit::SearchTimeLimit(std::function<void()> onExpiry) : onExpiry_(std::move(onExpiry)) {}

std::shared_ptr<SearchTimeLimit> SearchTimeLimit::arm(std::function<void()> onExpiry) {
  std::shared_ptr<SearchTimeLimit> limit(new SearchTimeLimit(std::move(onExpiry)));
  mainQueue().async([limit] { limit->schedule(); });
  return limit;
}

void SearchTimeLimit::schedule() {
  const std::lock_guard lock(mutex_);
  if (!valid_) return;
  timer_ = mainQueue().schedule(kLimit, [weak = weak_from_this()] {
    if (const auto limit = weak.lock()) limit->expire();
  });
}

void SearchTimeLimit::expire() {
  const std::lock_guard lock(mutex_);
  if (valid_) onExpiry_();
  valid_ = false;
}

void SearchTimeLimit::invalidate() {
  std::shared_ptr<KorvaniPlatform::Timer> timer;
  {
    const std::lock_guard lock(mutex_);
    valid_ = false;
    timer.swap(timer_);
  }
  // Without the lock, since a host may be told about its next wake-up here.
  if (timer) timer->invalidate();
}

}  // namespace KorvaniNavigation
