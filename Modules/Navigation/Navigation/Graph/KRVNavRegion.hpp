#pragma once

/// The part of the navigation graph that lies on one level and within one rectangle, with the
/// obstacles that lie there.
///
///   auto ground = std::make_shared<KRVNavRegion>(0);
///   ground->setSouthWestCoordinate({48.10, 11.50});
///   ground->setNorthEastCoordinate({48.20, 11.60});
///   graph->add(ground);                            // first the region to the graph,
///   ground->addNode(door);                         // then its points
///
/// The host sets the two corners. Nothing computes or widens them, and which region a position
/// belongs to is decided by them.
///
/// Ownership: shared, and only shared (a region on the stack has no back references to give out).
/// A graph holds its regions and a region its points and obstacles; it refers to its graph weakly.
/// A region is not copyable.
///
/// Thread safety: graph() and setGraph() may be called from any thread at any time. Everything else
/// is safe to read from many threads as long as nobody writes.

#include <cstdint>
#include <memory>

#include "Common/CountedArray.hpp"
#include "Common/CountedDictionary.hpp"
#include "Navigation/Graph/WatchFlag.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavGraph;
class KRVNavObstacle;
class KRVNavPoint;

class KORVANI_API KRVNavRegion : public std::enable_shared_from_this<KRVNavRegion> {
 public:
  /// Points by their identifierNumber, in the order in which they were first added.
  using Nodes = KorvaniCommon::CountedDictionary<std::int64_t, std::shared_ptr<KRVNavPoint>>;
  using Obstacles = KorvaniCommon::CountedArray<std::shared_ptr<KRVNavObstacle>>;

  /// An empty region of that level, of no graph, both corners at (0, 0).
  explicit KRVNavRegion(std::int64_t level);

  ~KRVNavRegion();
  KRVNavRegion(const KRVNavRegion&) = delete;
  KRVNavRegion& operator=(const KRVNavRegion&) = delete;

  /// The region's points.
  const Nodes& nodes() const { return nodes_; }
  Nodes& nodes() { return nodes_; }
  void setNodes(Nodes nodes);

  /// The region's obstacles, in the order in which they were added.
  const Obstacles& obstacles() const { return obstacles_; }
  Obstacles& obstacles() { return obstacles_; }
  void setObstacles(Obstacles obstacles);

  /// The level of every point of the region.
  std::int64_t level() const { return level_; }
  void setLevel(std::int64_t level) { level_ = level; }

  /// The corners of the bounding rectangle, in degrees; (0, 0) until they are set.
  CLLocationCoordinate2D northEastCoordinate() const { return northEastCoordinate_; }
  void setNorthEastCoordinate(CLLocationCoordinate2D c) { northEastCoordinate_ = c; }
  CLLocationCoordinate2D southWestCoordinate() const { return southWestCoordinate_; }
  void setSouthWestCoordinate(CLLocationCoordinate2D c) { southWestCoordinate_ = c; }

  /// The graph that the region was added to; absent before, and once the graph is gone.
  std::shared_ptr<KRVNavGraph> graph() const;
  void setGraph(const std::shared_ptr<KRVNavGraph>& graph);

  /// Makes this the point's region, then files the point (not null) under its identifierNumber in
  /// nodes(), then in the graph's nodes, in both places instead of an earlier point of that number.
  /// A region that has no graph yet skips the last: the graph that it is added to later will not
  /// know the point. Neither is the point's level compared with the region's nor the rectangle
  /// widened.
  void addNode(const std::shared_ptr<KRVNavPoint>& point);

  /// Appends an obstacle; one that is there already is there twice.
  void addObstacle(std::shared_ptr<KRVNavObstacle> obstacle);

 private:
  friend struct GraphAccess;

  Nodes nodes_;
  Obstacles obstacles_;
  std::int64_t level_;
  CLLocationCoordinate2D northEastCoordinate_;
  CLLocationCoordinate2D southWestCoordinate_;
  std::weak_ptr<KRVNavGraph> graph_;
  std::shared_ptr<KorvaniCommon::Revision> nodesRevision_;
  WatchFlag isWatched_;
  KorvaniCommon::Derived derived_;
};

}  // namespace KorvaniNavigation
