#pragma once

/// A directed, weighted connection between two points of the navigation graph.
///
///   auto stairs = std::make_shared<KRVNavEdge>(lower, upper, 12.0, 2.5, false, "stairs");
///   graph->addEdge(stairs, *lower, *upper);
///
/// An edge from A to B says nothing about B to A: a walkable corridor is entered twice, once in
/// each direction. What an edge costs a path finder is distance() times multiplicator().
///
/// Ownership: shared; an edge holds its two points. It is not copyable.
///
/// Thread safety: start(), end() and type() and their setters may be called from any thread at any
/// time. Everything else is safe to read from many threads as long as nobody writes.

#include <memory>
#include <optional>
#include <string>

#include "Navigation/Graph/WatchFlag.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;

class KORVANI_API KRVNavEdge {
 public:
  /// A plain way between two points (neither null): as long as start->distanceFrom(*end), level
  /// height included, multiplicator 1, barrier-free, without type.
  KRVNavEdge(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end);

  /// The same with given values, without type.
  KRVNavEdge(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end, double distance,
             double multiplicator, bool isBarrierFree);

  /// All six values, stored as given: nothing is checked or derived.
  KRVNavEdge(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end, double distance,
             double multiplicator, bool isBarrierFree, std::optional<std::string> type);

  ~KRVNavEdge();
  KRVNavEdge(const KRVNavEdge&) = delete;
  KRVNavEdge& operator=(const KRVNavEdge&) = delete;

  /// The node where the edge starts, and the one where it ends.
  std::shared_ptr<KRVNavPoint> start() const;
  void setStart(std::shared_ptr<KRVNavPoint> start);
  std::shared_ptr<KRVNavPoint> end() const;
  void setEnd(std::shared_ptr<KRVNavPoint> end);

  /// Length in metres, as path finding counts it.
  double distance() const { return distance_; }
  void setDistance(double distance);

  /// The factor that path finders apply to the distance; 1 is plain walking.
  double multiplicator() const { return multiplicator_; }
  void setMultiplicator(double multiplicator);

  /// Whether a barrier-free route may use the edge.
  bool isBarrierFree() const { return isBarrierFree_; }
  void setIsBarrierFree(bool isBarrierFree);

  /// What kind of way the map data calls it ("stairs", "elevator", ...); absent when it does not
  /// say. The module hands it on and never looks into it.
  std::optional<std::string> type() const;
  void setType(std::optional<std::string> type);

 private:
  friend struct GraphAccess;

  std::shared_ptr<KRVNavPoint> start_;
  std::shared_ptr<KRVNavPoint> end_;
  double distance_ = 0;
  double multiplicator_ = 1;
  bool isBarrierFree_ = true;
  WatchFlag isWatched_;
  std::optional<std::string> type_;
};

}  // namespace KorvaniNavigation
