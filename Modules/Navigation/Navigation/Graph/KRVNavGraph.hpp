#pragma once

/// The navigation graph of a building: regions with their points, and the directed edges between
/// the points.
///
///   auto graph = std::make_shared<KRVNavGraph>();
///   auto ground = std::make_shared<KRVNavRegion>(0);
///   graph->add(ground);                                       // regions first,
///   ground->addNode(door);                                    // then their points,
///   ground->addNode(desk);
///   graph->addEdge(std::make_shared<KRVNavEdge>(door, desk), *door, *desk);   // then edges,
///   graph->addEdge(std::make_shared<KRVNavEdge>(desk, door), *desk, *door);   // both ways
///
/// The host builds one graph from its map data and hands it to the facade; the module builds
/// further, small ones for the routes it follows. Nothing is validated: what is said of the
/// operations below is all that they do.
///
/// Order: regions, points and edges are listed in the order in which they were added; replacing an
/// entry keeps its place.
///
/// Ownership: shared, and only shared (a graph on the stack has no back references to give out). A
/// graph holds its regions, points and edges. It is not copyable.
///
/// Thread safety: safe to read from many threads as long as nobody writes. A graph must not change
/// while tasks run on it.

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Common/CountedArray.hpp"
#include "Common/CountedDictionary.hpp"
#include "Navigation/Graph/WatchFlag.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavEdge;
class KRVNavPoint;
class KRVNavRegion;

class KORVANI_API KRVNavGraph : public std::enable_shared_from_this<KRVNavGraph> {
 public:
  using Regions = KorvaniCommon::CountedArray<std::shared_ptr<KRVNavRegion>>;
  /// The edges that start at one node, by the identifierNumber of the node where they end.
  using EdgeRow = KorvaniCommon::CountedDictionary<std::int64_t, std::shared_ptr<KRVNavEdge>>;
  /// The rows, by the identifierNumber of the node where their edges start.
  using Edges = KorvaniCommon::CountedDictionary<std::int64_t, EdgeRow>;
  /// Points by their identifierNumber.
  using Nodes = KorvaniCommon::CountedDictionary<std::int64_t, std::shared_ptr<KRVNavPoint>>;

  /// An empty graph.
  KRVNavGraph();
  ~KRVNavGraph();
  KRVNavGraph(const KRVNavGraph&) = delete;
  KRVNavGraph& operator=(const KRVNavGraph&) = delete;

  /// The regions that were added.
  const Regions& regions() const { return regions_; }
  Regions& regions() { return regions_; }
  void setRegions(Regions regions);

  /// The adjacency: start node, end node, edge.
  const Edges& edges() const { return edges_; }
  Edges& edges() { return edges_; }
  void setEdges(Edges edges);

  /// Every point of every region; KRVNavRegion::addNode fills it.
  const Nodes& nodes() const { return nodes_; }
  Nodes& nodes() { return nodes_; }
  void setNodes(Nodes nodes);

  /// Always null. Kept because it is part of the class's published interface.
  const Edges* nodeEdges() const { return nullptr; }

  /// The point filed under that number; absent when there is none.
  std::shared_ptr<KRVNavPoint> nodeWithIdentifier(std::int64_t identifierNumber) const;

  /// The numbers of the nodes where the edges from this node end, in the order in which the edges
  /// were added. Absent, rather than empty, when no edge starts here.
  std::optional<std::vector<std::int64_t>> neighbourIdentifiersOfNode(
      const KRVNavPoint& node) const;
  std::optional<std::vector<std::int64_t>> neighbourIdentifiersOfNodeWithIdentifier(
      std::int64_t identifierNumber) const;

  /// The edge from one node to another; absent when there is none in that direction.
  std::shared_ptr<KRVNavEdge> edgeFromNode(const KRVNavPoint& from,
                                           const KRVNavPoint& toNeighbourNode) const;
  std::shared_ptr<KRVNavEdge> edgeFromNodeWithIdentifier(
      std::int64_t from, std::int64_t toNeighbourNodeWithIdentifier) const;

  /// Files `edge` under the two nodes' identifierNumbers, instead of an earlier edge between the
  /// same two in the same direction. Nothing else: no edge back, no nodes added, and the edge's own
  /// start and end neither read nor compared.
  void addEdge(std::shared_ptr<KRVNavEdge> edge, const KRVNavPoint& fromNode,
               const KRVNavPoint& toNode);

  /// Makes this the region's graph and appends the region (not null) to regions(). A region that is
  /// there already is there twice.
  void add(const std::shared_ptr<KRVNavRegion>& region);

 private:
  friend struct GraphAccess;

  Regions regions_;
  Edges edges_;
  Nodes nodes_;
  std::shared_ptr<KorvaniCommon::Revision> revision_;
  const WatchFlag::Watcher watcher_;
  KorvaniCommon::Derived derived_;
};

}  // namespace KorvaniNavigation
