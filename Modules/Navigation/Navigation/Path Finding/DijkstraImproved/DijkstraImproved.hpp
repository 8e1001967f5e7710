#pragma once

/// The path finder of the routing tasks: the cheapest way from one of several start points to the
/// nearest of several destinations.
///
/// The search corrects labels in waves: each wave relaxes the outgoing edges of the points that the
/// wave before improved, until no label improves any more. It does not stop at the first
/// destination it reaches and prunes nothing, so with costs that are not negative the answer is
/// exact. An edge costs multiplicator() * distance(). Of two ways of equal cost the earlier found
/// one stays.
///
///   DijkstraImproved finder(configDependents);
///   finder.setLookForBarrierFreeRoute(true);
///   auto way = finder.findPathInGraph(graph, {a, b}, {2.0, 3.5}, {shop}, true);
///   if (!way.empty()) use(way, finder.destination());
///
/// A destination is never passed through, so a start point that is a destination leads nowhere: it
/// is not expanded, and a way of no edge is not found.
///
/// Points and labels. Labels belong to point objects: two equal points (KRVNavPoint::isEqual) that
/// are different objects have a label each. "Is a destination" and "is already waiting for the next
/// wave" go by point equality.
///
/// A finder keeps its labels and its best path when a search ends. One that is to search again is
/// given restart() first; otherwise the next search goes on from the old labels.
///
/// Cost: a graph whose points and edges are its own is searched in arrays that are made once and
/// kept until the graph changes, towards the destinations and no farther; that finds the same way,
/// ties included. The labels of the whole search are made only when somebody asks for them. Any
/// other graph, and a search that goes on from old labels, is searched object by object, where
/// every relaxation takes constant time and, if it improves a label, constant memory.
///
/// Ownership: the finder keeps the points it has seen alive until restart(). The configuration
/// bundle is referred to weakly.
///
/// Thread safety: interrupt(), setInterrupted() and interrupted() may be called from any thread,
/// also during a search, which then throws away what it has made and ends, at most one relaxation
/// later. One thing goes on to its end: the first search for a destination that is no node itself
/// has the nodes sorted by identifier, which takes 80 milliseconds for a million of them.
/// Everything else belongs to the thread that searches.

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

#include "Common/Benchmark.hpp"
#include "Navigation/Path Finding/DijkstraImproved/PointPath.hpp"
#include "Navigation/Path Finding/KRVNavPathFinder.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class WaveLabels;
struct ArraySearch;

class KORVANI_API DijkstraImproved : public KRVNavPathFinder {
 public:
  using Points = std::vector<std::shared_ptr<KRVNavPoint>>;

  using Path = PointPath;

  /// A finder for the tasks of one configuration; nothing searched yet, both flags off.
  explicit DijkstraImproved(std::weak_ptr<ConfigDependents> configDependents);

  /// Not to be used: a finder belongs to a configuration. Fatal error "Should not use".
  DijkstraImproved();

  ~DijkstraImproved() override;
  DijkstraImproved(const DijkstraImproved&) = delete;
  DijkstraImproved& operator=(const DijkstraImproved&) = delete;

  /// The search (see the class). `withIntersectionDistances` must be at least as long as
  /// `fromIntersections`: a shorter one is a fatal error. A start point that is listed twice counts
  /// with its later distance. The argument `lookForBarrierFreeRoute` is ignored; the property of
  /// that name decides. Returns an empty list when no destination is reached, when no start point
  /// is given, and when the search is interrupted while it runs; destination() is absent then.
  /// A finder that was interrupted before and not restarted starts nothing: it gives what an
  /// earlier search has found.
  Points findPathInGraph(const std::shared_ptr<KRVNavGraph>& graph, const Points& fromIntersections,
                         const std::vector<double>& withIntersectionDistances,
                         const Points& toDestinationNodes, bool lookForBarrierFreeRoute) override;

  /// One wave: relaxes the outgoing edges of the points in nodesToCheck() and makes the points that
  /// it improved the next ones. An interrupted wave forgets the best path and leaves no points.
  /// The edges are those of the points themselves; the graph is not used.
  void iteration(const std::shared_ptr<KRVNavGraph>& with);

  /// Whether `node` equals one of the destinations of the latest search.
  bool isDestination(const KRVNavPoint& node) const;

  /// Sets interrupted() and does nothing else.
  void interrupt() override;

  /// Clears interrupted(), every label, the waiting points and the best path. Destinations,
  /// destination() and lookForBarrierFreeRoute() stay as they are.
  void restart() override;

  /// Whether edges that are not barrier-free are ignored; off at first.
  bool lookForBarrierFreeRoute() const { return lookForBarrierFreeRoute_; }
  void setLookForBarrierFreeRoute(bool look) { lookForBarrierFreeRoute_ = look; }

  /// Whether searches give up.
  bool interrupted() const { return interrupted_.load(); }
  void setInterrupted(bool interrupted) { interrupted_.store(interrupted); }

  /// The destination that the latest search reached; absent when it reached none.
  std::shared_ptr<KRVNavPoint> destination() const { return destination_; }
  void setDestination(std::shared_ptr<KRVNavPoint> destination);

  /// The cheapest way to a destination so far; absent when there is none.
  std::optional<Path> bestPath() const;

  /// The best way so far to that point object; absent when it was not reached.
  std::optional<Path> pathTo(const KRVNavPoint& point) const;

  /// The points whose edges the next wave relaxes, in that order.
  const Points& nodesToCheck() const;

  /// The destinations of the latest search.
  const Points& destinationNodes() const { return destinationNodes_; }

  /// The stop-watch of the latest search, running since it began; absent before the first one.
  const std::optional<KorvaniCommon::Benchmark>& benchmark() const { return benchmark_; }

  std::weak_ptr<ConfigDependents> configDependents() const { return configDependents_; }

 private:
  bool searchInArrays(const Points& starts, const std::vector<double>& distances);
  bool interruptedBefore(const Points& starts, const std::vector<double>& distances);
  void searchObjects(const Points& starts, const std::vector<double>& distances);
  bool makeLabels(const std::atomic<bool>& interrupted) const;
  WaveLabels& labels() const;

  std::weak_ptr<ConfigDependents> configDependents_;
  Points destinationNodes_;
  bool lookForBarrierFreeRoute_ = false;
  std::atomic<bool> interrupted_{false};
  std::shared_ptr<KRVNavPoint> destination_;
  std::unique_ptr<WaveLabels> labels_;
  /// The latest search, when it was made in arrays and its labels were not asked for.
  mutable std::unique_ptr<ArraySearch> inArrays_;
  std::optional<KorvaniCommon::Benchmark> benchmark_;
};

}  // namespace KorvaniNavigation
