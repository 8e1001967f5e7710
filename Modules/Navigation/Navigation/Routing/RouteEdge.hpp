#pragma once

// Internal. An edge of the way that a route is made of.

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace KorvaniNavigation {

class KRVNavEdge;
class KRVNavPoint;

/// What a way needs of an edge, read once: the accessors of a graph's edges are indivisible steps,
/// and each would take its lock again. Stretches beside the graph need no edge object at all.
struct RouteEdge {
  /// As the edge is now. Fatal error for an edge without start or end.
  explicit RouteEdge(const KRVNavEdge& edge);

  /// A stretch that is not of the graph: plain walking, free of barriers, of no type.
  RouteEdge(std::shared_ptr<KRVNavPoint> from, std::shared_ptr<KRVNavPoint> to, double metres);

  std::shared_ptr<KRVNavPoint> start;
  std::shared_ptr<KRVNavPoint> end;
  double distance = 0;  ///< metres
  double multiplicator = 1;
  bool isBarrierFree = true;
  std::optional<std::string> type;

  friend bool operator==(const RouteEdge&, const RouteEdge&) = default;
};

using Edges = std::vector<RouteEdge>;

}  // namespace KorvaniNavigation
