#include "Navigation/Obstacles/Walls.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "Navigation/Graph/GraphChanges.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

namespace {

bool canBeTested(const std::shared_ptr<KRVNavObstacle>& obstacle) {
  return obstacle && !obstacle->coordinates().empty();
}

void appendEdges(const KRVNavObstacle& obstacle, std::uint32_t place,
                 std::vector<WallEdge>& edges) {
  const auto& corners = obstacle.coordinates();
  MKMapPoint from = KorvaniPlatform::MKMapPointForCoordinate(corners.front());
  for (std::size_t i = 1; i < corners.size(); ++i) {
    const MKMapPoint to = KorvaniPlatform::MKMapPointForCoordinate(corners[i]);
    edges.push_back({from, to, place});
    from = to;
  }
}

std::unique_ptr<const WallGrid> gridOf(const Walls::Obstacles& obstacles) {
  std::size_t count = 0;
  for (const auto& obstacle : obstacles) {
    if (obstacle) GraphAccess::watch(*obstacle);
    if (!canBeTested(obstacle)) return nullptr;
    count += obstacle->coordinates().size() - 1;
  }
  if (std::max(count, obstacles.size()) >= std::numeric_limits<std::uint32_t>::max())
    return nullptr;
  std::vector<WallEdge> edges;
  edges.reserve(count);
  for (std::size_t i = 0; i < obstacles.size(); ++i) {
    appendEdges(*obstacles[i], static_cast<std::uint32_t>(i), edges);
  }
  return std::make_unique<const WallGrid>(std::move(edges));
}

}  // namespace

std::shared_ptr<const Walls> Walls::of(const Obstacles& obstacles) {
  const RevisionStamp stamp = GraphAccess::obstaclesStamp();
  return obstacles.derived().get<Walls>(stamp,
                                        [&] { return std::make_shared<const Walls>(stamp); });
}

Walls::Walls(RevisionStamp stamp)
    : stamp_(stamp), obstacles_(graphChanges(WatchFlag::kEverybody).obstacles) {}

const WallGrid* Walls::grid(const Obstacles& obstacles) const {
  if (isMade_.load(std::memory_order_acquire)) return grid_.get();
  if (questions_.fetch_add(1, std::memory_order_relaxed) < kQuestionsWithoutGrid) return nullptr;
  return gridNow(obstacles);
}

const WallGrid* Walls::gridNow(const Obstacles& obstacles) const {
  if (isMade_.load(std::memory_order_acquire)) return grid_.get();
  const std::lock_guard lock(making_);
  if (!isMade_.load(std::memory_order_relaxed)) {
    grid_ = gridOf(obstacles);
    isMade_.store(true, std::memory_order_release);
  }
  return grid_.get();
}

}  // namespace KorvaniNavigation
