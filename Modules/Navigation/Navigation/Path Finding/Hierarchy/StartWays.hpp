#pragma once

// Internal.

/// Decides between ways from several starts of a query that cost nearly the same, where that can be
/// told without searching.
///
/// A position exactly on a node is the common case: it stands on an edge A-B at A, so that the
/// query starts at A with distance 0 and at B with the length of the edge. Whenever the way leads
/// over B, the one from A over the edge and the one that starts at B cost the same.
///
/// Each way is the only cheapest one from its start; every other one from there costs more than
/// rounding can make up for. If one of two such ways comes through the start of the other and goes
/// on like that one, only the labels on the common part can come from either, and what `WaveSearch`
/// makes of them is plain: the label of a start is there from the beginning, and stays unless the
/// way that comes there is cheaper, as walking adds it up. If it is, it runs after the labels that
/// the start has sent ahead and replaces them one by one, as long as rounding leaves it the
/// cheaper one at every node. It has none to run after if it comes there over one edge from a start
/// that is listed before: then that start's edges are relaxed first.

#include <cstddef>
#include <optional>
#include <span>

#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchyPlaces.hpp"

namespace KorvaniNavigation {

struct StartWay {
  std::size_t listed = 0;  ///< which of the query's starts
  double distance = 0;     ///< the start's own
  double sum = 0;          ///< what the way costs, as the hierarchy adds it up
  FoundPath path;
};

/// The way that `WaveSearch` finds; absent when that cannot be told.
/// @param ways the cheapest from each start that has one as cheap; no start is listed twice
std::optional<std::size_t> wayOfWaves(std::span<const StartWay> ways,
                                      const HierarchyPlaces& places);

}  // namespace KorvaniNavigation
