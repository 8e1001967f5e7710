#pragma once

/// What every path finder of the module can do, so that routing can hold any of them.
///
///   std::shared_ptr<KRVNavPathFinder> finder = ...;
///   finder->restart();
///   auto way = finder->findPathInGraph(graph, {door}, {1.5}, {desk, shelf}, false);
///
/// Ownership: held by whoever searches. Thread safety: one search at a time per finder;
/// interrupt() may be called from any thread while one runs.

#include <memory>
#include <vector>

#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavGraph;
class KRVNavPoint;

class KORVANI_API KRVNavPathFinder {
 public:
  virtual ~KRVNavPathFinder() = default;

  /// The cheapest chain of points from one of the start points `fromIntersections` to one of
  /// `toDestinationNodes`, start first, destination last; empty when there is none or the search
  /// was interrupted while it ran. `withIntersectionDistances` holds, at the same index as its
  /// start point, the metres already travelled to get there; they count as part of the way. What
  /// `lookForBarrierFreeRoute` does is each finder's own to say.
  virtual std::vector<std::shared_ptr<KRVNavPoint>> findPathInGraph(
      const std::shared_ptr<KRVNavGraph>& graph,
      const std::vector<std::shared_ptr<KRVNavPoint>>& fromIntersections,
      const std::vector<double>& withIntersectionDistances,
      const std::vector<std::shared_ptr<KRVNavPoint>>& toDestinationNodes,
      bool lookForBarrierFreeRoute) = 0;

  /// Makes a running search give up soon, and later ones too until restart().
  virtual void interrupt() = 0;

  /// Makes the finder fit for a search again.
  virtual void restart() = 0;
};

}  // namespace KorvaniNavigation
