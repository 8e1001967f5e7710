#include "Navigation/Routing/RouteOptimisation.hpp"

#include <algorithm>
#include <cmath>

#include "Common/KorvaniCommonHelpers.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"

namespace KorvaniNavigation {

namespace {

constexpr double kMaximumShortcutLength = 20.0;  // metres
constexpr double kMinimumTurn = 20.0;            // degrees

/// The line past the corner between two successive edges; absent where it may not be cut.
std::shared_ptr<KRVNavEdge> shortcut(const KRVNavEdge& edge, const KRVNavEdge& next,
                                     const ObstacleDetector& detector) {
  const auto start = edge.start();
  const auto corner = next.start();
  const auto end = next.end();
  if (start->level() != end->level()) return nullptr;
  const double distance = start->location().distanceFromLocation(end->location());
  if (distance > kMaximumShortcutLength) return nullptr;
  const double turn = KorvaniCommon::KorvaniCommonHelpers::clockwiseAngleBetweenLines(
      start->coordinate(), corner->coordinate(), corner->coordinate(), end->coordinate());
  if (std::abs(turn) < kMinimumTurn) return nullptr;
  if (detector.isAnyBarrierInBetween(start->coordinate(), end->coordinate())) return nullptr;
  return std::make_shared<KRVNavEdge>(start, end, distance, edge.multiplicator(),
                                      edge.isBarrierFree(), edge.type());
}

}  // namespace

std::vector<std::shared_ptr<KRVNavEdge>> cutCorners(
    const std::vector<std::shared_ptr<KRVNavEdge>>& edges, const ObstacleDetector& detector) {
  if (edges.size() < 2) return edges;
  std::vector<std::shared_ptr<KRVNavEdge>> backwards;
  for (std::size_t i = edges.size(); i-- > 0;) {
    const auto& edge = edges[i];
    auto cut = backwards.empty() ? nullptr : shortcut(*edge, *backwards.back(), detector);
    if (cut) {
      backwards.back() = std::move(cut);
    } else {
      backwards.push_back(edge);
    }
  }
  std::reverse(backwards.begin(), backwards.end());
  return backwards;
}

}  // namespace KorvaniNavigation
