#pragma once

// Internal.

/// How far apart the costs of two ways must be for no rounding to make them equal or swap them.
///
/// A sum of k costs, whatever their order, is off by at most k roundings, each at most 2^-53 of the
/// sum; adding nothing is exact. A way of cost c visits a node once, so that k is at most the
/// number of nodes, and at most c / t plus the number of nodes that an edge shorter than t leads
/// to.
///
/// The margin is a small part of the mean cost: more than rounding needs up to ways of many
/// thousands of edges, and so little that ways which are not meant to be equal seldom come as
/// close.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"

namespace KorvaniNavigation {

class RoundingBound {
 public:
  RoundingBound(const SearchGraph& graph, bool barrierFree);

  /// Metres; two costs that differ by more are costs of different ways in that order.
  double margin() const { return margin_; }

  /// Whether the margin is wide enough for a way that costs that much.
  bool holdsFor(double cost) const;

 private:
  static constexpr double kMarginOfMean = 0x1p-22;
  static constexpr double kShortOfMean = 0x1p-5;
  // A cost is added up in three ways: as arcs, as labels and in walking order, for each of the two
  // that are compared. The rest is reserve.
  static constexpr double kReserve = 16;

  double margin_ = 0;
  double least_ = std::numeric_limits<double>::infinity();
  double short_ = 0;
  double nodesAfterShort_ = 0;
  double nodes_ = 0;
  bool finite_ = true;
};

inline RoundingBound::RoundingBound(const SearchGraph& graph, bool barrierFree)
    : nodes_(graph.nodeCount()) {
  double sum = 0;
  double count = 0;
  for (std::uint32_t edge = 0; edge < graph.edgeCount(); ++edge) {
    const double cost = graph.cost[edge];
    if (cost == 0 || (barrierFree && graph.barrierFree[edge] == 0)) continue;
    sum += cost;
    ++count;
    least_ = std::min(least_, cost);
  }
  finite_ = std::isfinite(sum);
  if (count == 0 || !finite_) return;
  margin_ = sum / count * kMarginOfMean;
  short_ = sum / count * kShortOfMean;
  for (std::uint32_t edge = 0; edge < graph.edgeCount(); ++edge) {
    const double cost = graph.cost[edge];
    if (cost > 0 && cost < short_) ++nodesAfterShort_;  // an edge for each node, at least
  }
}

inline bool RoundingBound::holdsFor(double cost) const {
  if (!finite_) return false;
  if (std::isinf(least_)) return true;  // all costs are 0
  const double edges = std::min({nodes_, cost / least_, nodesAfterShort_ + cost / short_}) + 2;
  return kReserve * 0x1p-53 * edges * cost <= margin_;
}

}  // namespace KorvaniNavigation
