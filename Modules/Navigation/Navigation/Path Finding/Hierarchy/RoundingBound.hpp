#pragma once

// Internal.

/// How far apart the costs of two ways must be for no rounding to make them equal or swap them.
///
/// A sum of k costs, whatever their order, is off by at most k roundings, each at most 2^-53 of the
/// sum; adding nothing is exact. A way of cost c visits a node once, so that k is at most the
/// number of nodes, and at most c / t plus the number of nodes that an edge shorter than t leads
/// to.
///
/// Whatever margin a hierarchy is made with, it decides a query rightly if the margin is wider than
/// the roundings of the ways that cost as much as the one it has found, and as little more as the
/// margin is. All others cost more in any order: sums only grow, so a way that has an edge dearer
/// than that, or a part, cannot come down to it again. How wrong the sums of such ways are, and
/// which of them the hierarchy has dropped or called tied, does not matter therefore. So the margin
/// is chosen once, for most queries, and each answer is tested by what it costs.
///
/// The margin is a small part of what half of the edges cost at most: more than rounding needs up
/// to ways of many thousands of edges, and so little that ways which are not meant to be equal
/// seldom come as close. It is not a part of the mean, which a few edges would lift that are dear
/// beyond measure, as a host may make those that are closed.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

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
  static constexpr std::uint32_t kEdgesForMedian = 8192;
  static constexpr double kMarginOfMedian = 0x1p-22;
  static constexpr double kShortOfMedian = 0x1p-5;
  // A cost is added up in three ways: as arcs, as labels and in walking order, for each of the two
  // that are compared. The rest is reserve.
  static constexpr double kReserve = 16;

  template <typename Counts>
  static double medianOf(const SearchGraph& graph, const Counts& counts);

  double margin_ = 0;
  double least_ = std::numeric_limits<double>::infinity();
  double short_ = 0;
  double nodesAfterShort_ = 0;
  double nodes_ = 0;
};

inline RoundingBound::RoundingBound(const SearchGraph& graph, bool barrierFree)
    : nodes_(graph.nodeCount()) {
  const auto counts = [&](std::uint32_t edge) {
    return graph.cost[edge] > 0 && (!barrierFree || graph.barrierFree[edge] != 0);
  };
  const double median = medianOf(graph, counts);
  margin_ = median * kMarginOfMedian;
  short_ = median * kShortOfMedian;
  for (std::uint32_t edge = 0; edge < graph.edgeCount(); ++edge) {
    if (!counts(edge)) continue;
    least_ = std::min(least_, graph.cost[edge]);
    if (graph.cost[edge] < short_) ++nodesAfterShort_;  // an edge for each node, at least
  }
}

/// 0 when no edge counts. The bound is right with any number here, so some thousand edges do; an
/// odd distance between them, lest they be alike.
template <typename Counts>
double RoundingBound::medianOf(const SearchGraph& graph, const Counts& counts) {
  std::vector<double> costs;
  const std::uint32_t stride = (graph.edgeCount() / kEdgesForMedian) | 1U;
  for (std::uint32_t edge = 0; edge < graph.edgeCount(); edge += stride) {
    if (counts(edge)) costs.push_back(graph.cost[edge]);
  }
  if (costs.empty()) return 0;
  const auto middle = costs.begin() + static_cast<std::ptrdiff_t>(costs.size() / 2);
  std::nth_element(costs.begin(), middle, costs.end());
  return *middle;
}

inline bool RoundingBound::holdsFor(double cost) const {
  if (std::isinf(least_)) return true;  // all costs are 0
  const double edges = std::min({nodes_, cost / least_, nodesAfterShort_ + cost / short_}) + 2;
  return kReserve * 0x1p-53 * edges * cost <= margin_;
}

}  // namespace KorvaniNavigation
