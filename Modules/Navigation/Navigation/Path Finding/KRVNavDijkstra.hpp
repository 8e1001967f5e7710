#pragma once

/// The older path finder: Dijkstra's search over a graph, for hosts that search on their own. The
/// engine's tasks do not use it; theirs is DijkstraImproved.
///
///   KRVNavDijkstra finder;
///   auto way = finder.findPathInGraph(graph, {a, b}, {2.0, 3.5}, {shop, kiosk}, false);
///   if (!way.empty()) use(way, finder.destination());
///
/// The search visits nodes in the order of their distance from the start points and ends at the
/// first destination. An edge costs distance() * multiplicator(). With costs that are not negative
/// the answer is exact; of nodes at equal distance the one that the graph lists first is visited
/// first.
///
/// Nodes are what the graph knows by its nodes() and edges(), by number: the edges' own start and
/// end points are not read.
///
/// What is as it is for the hosts that rely on it:
/// - Edges that are not barrier-free are used like any other, whatever the property and the
///   argument lookForBarrierFreeRoute say.
/// - A search does not clear interrupted(): once interrupted, every search gives nothing until
///   restart().
/// - A distance of -1 means that a node is not reached yet, so a true distance of exactly -1 counts
///   as not reached.
/// - A start point that is a destination is a way of one point (DijkstraImproved finds none).
///
/// Unusual input is no error. A null graph is one without nodes. A null start point, and one for
/// which no distance is given, is left out; a start point that the graph does not know gets its
/// entry in distancesFromSource() and leads nowhere. Null destinations are left out. An edge that
/// is null, or that leads to a node the graph does not know, is skipped. A distance that is not a
/// number counts as longer than any number, so such a way is taken only where there is no other.
/// With negative costs the way need not be the cheapest, and no point is on it twice.
///
/// Cost: quadratic in the number of the graph's nodes, since each round looks through all nodes
/// that are not visited yet. That suits the graph of one building.
///
/// Ownership: the finder holds no point; destination() is a weak reference, absent once nobody else
/// holds the point.
///
/// Thread safety: interrupt(), restart(), interrupted(), setInterrupted(), distancesFromSource()
/// and setDistancesFromSource() may be called from any thread, also during a search. Everything
/// else belongs to the thread that searches. One finder runs one search at a time.

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "Navigation/Names.hpp"
#include "Navigation/Path Finding/KRVNavPathFinder.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KORVANI_API KRVNavDijkstra : public KRVNavPathFinder {
 public:
  using Points = std::vector<std::shared_ptr<KRVNavPoint>>;
  using Identifiers = std::vector<std::int64_t>;
  /// Metres from the start points, start distances included, by identifierNumber. The integer -1
  /// marks a node that was not reached; a distance is of double precision.
  using Distances = OrderedDictionary<std::int64_t, Number>;
  /// The point before each node on the best way to it, by the node's identifierNumber.
  using Predecessors = OrderedDictionary<std::int64_t, std::shared_ptr<KRVNavPoint>>;

  /// Nothing searched yet, both flags off.
  KRVNavDijkstra();
  ~KRVNavDijkstra() override;
  KRVNavDijkstra(const KRVNavDijkstra&) = delete;
  KRVNavDijkstra& operator=(const KRVNavDijkstra&) = delete;

  /// The search (see the class). A start point that is listed twice counts with its later distance.
  /// The argument `lookForBarrierFreeRoute` is ignored. The list is empty when no destination is
  /// reached and when the finder is interrupted, before or during the search; destination() is
  /// absent then.
  Points findPathInGraph(const std::shared_ptr<KRVNavGraph>& graph, const Points& fromIntersections,
                         const std::vector<double>& withIntersectionDistances,
                         const Points& toDestinationNodes, bool lookForBarrierFreeRoute) override;

  /// Sets interrupted() and does nothing else. A running search gives up within one round.
  void interrupt() override;

  /// Clears interrupted() and does nothing else: each search begins anew anyway.
  void restart() override;

  /// The way that `predecessors` tells: from the first point without predecessor to `fromTarget`,
  /// both included. In a circle of predecessors it begins where it would come to a node again.
  /// Empty for a null target.
  Points tracePredecessors(const Predecessors& predecessors,
                           const std::shared_ptr<KRVNavPoint>& fromTarget) const;

  /// Whether a point of the list `with` has the identifier() of `point`. Despite the name, no
  /// distance is looked at. Points without identifier are not told apart: they all have -1.
  bool isCloseToDestination(const KRVNavPoint& point, const Points& with) const;

  /// Which of these nodes is nearest by distancesFromSource(), the first of them if several are.
  /// Absent when none is reached; a node without entry is not.
  std::optional<std::int64_t> nodeIdentifierWithSmallestDistanceIn(
      const Identifiers& identifiers) const;

  /// Kept for hosts that store it here; the search does not read it. Off at first.
  bool lookForBarrierFreeRoute() const { return lookForBarrierFreeRoute_; }
  void setLookForBarrierFreeRoute(bool look) { lookForBarrierFreeRoute_ = look; }

  /// Whether searches give up.
  bool interrupted() const { return interrupted_.load(); }
  void setInterrupted(bool interrupted) { interrupted_.store(interrupted); }

  /// The graph's node that the latest search reached; absent when it reached none.
  std::shared_ptr<KRVNavPoint> destination() const { return destination_.lock(); }
  void setDestination(const std::shared_ptr<KRVNavPoint>& destination);

  /// What the latest search found out, in the order of the graph's nodes; empty before the first
  /// one. A destination's distance is final, as are those of the nodes nearer than it. Returns a
  /// copy.
  Distances distancesFromSource() const;
  void setDistancesFromSource(Distances distances);

 private:
  void prepareDistances(const Identifiers& nodes, const Points& starts,
                        const std::vector<double>& startDistances);
  std::optional<std::int64_t> visitNodes(const KRVNavGraph& graph, Identifiers unvisited,
                                         const Points& destinations, Predecessors& predecessors);
  void expand(const KRVNavGraph& graph, std::int64_t identifier, Predecessors& predecessors);
  bool relax(std::int64_t identifier, std::int64_t neighbour, double cost);
  double distanceOf(std::int64_t identifier) const;

  bool lookForBarrierFreeRoute_ = false;
  std::atomic<bool> interrupted_{false};
  std::weak_ptr<KRVNavPoint> destination_;
  mutable std::mutex distancesMutex_;
  Distances distancesFromSource_;
};

}  // namespace KorvaniNavigation
