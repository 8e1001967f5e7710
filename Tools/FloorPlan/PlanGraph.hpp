#pragma once

/// Internal. The graph of a floor plan while it is being made.

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"
#include "FloorPlan/LocalFrame.hpp"

namespace KorvaniTools {

/// Metres between what people would not tell apart.
inline constexpr double kSameSpot = 0.1;

/// Nodes by index, and edges of two sorts: drawn ones, which may yet be stopped at, and made
/// ones, of which there is one between two nodes.
class PlanGraph {
 public:
  struct Node {
    std::int64_t level = 0;
    GroundPoint at;
  };

  struct Edge {
    std::size_t from = 0;
    std::size_t to = 0;
    ConnectionKind kind = ConnectionKind::path;
    StepFree stepFree = StepFree::unknown;
    bool oneway = false;
  };

  std::size_t addNode(std::int64_t level, GroundPoint at);

  /// The node at the source's `key` on that level, made on the first call. Key 0 is nobody's.
  std::size_t nodeAt(std::int64_t key, std::int64_t level, GroundPoint at);
  std::optional<std::size_t> findAt(std::int64_t key, std::int64_t level) const;
  /// Has a further key lead to a node.
  void name(std::int64_t key, std::int64_t level, std::size_t node);

  const std::vector<Node>& nodes() const { return nodes_; }

  /// Adds a piece of a drawn line, unless the same one is there already. Tells whether it did.
  bool addDrawn(const Edge& edge);
  const std::vector<Edge>& drawn() const { return drawn_; }

  /// Notes that a drawn line begins or ends at a node.
  void endLineAt(std::size_t node) { lineEnds_.insert(node); }
  bool isLineEnd(std::size_t node) const { return lineEnds_.contains(node); }

  /// The node on a drawn piece at `share` of its length, made unless one lies within 0.1 m.
  std::size_t stopOn(std::size_t drawn, double share);
  /// Has a drawn piece stop at a node that lies on it, unless one of its own lies within 0.1 m.
  /// Returns the stop.
  std::size_t stopAt(std::size_t drawn, double share, std::size_t node);
  /// The stops of a drawn piece and its ends, in order.
  std::vector<std::size_t> stopsOf(std::size_t drawn) const;

  /// Adds a made edge unless the two nodes are the same or have one.
  void addMade(const Edge& edge);

  /// All edges, drawn ones cut at their stops, in the order of addition. A made edge between two
  /// neighbouring stops is left out: the drawn line is there.
  std::vector<Edge> edges() const;
  bool hasEdges(std::size_t node) const;

 private:
  std::vector<Node> nodes_;
  std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> keys_;
  std::vector<Edge> drawn_;
  std::set<std::tuple<std::size_t, std::size_t, ConnectionKind, bool>> drawnOnce_;
  std::map<std::size_t, std::map<double, std::size_t>> stops_;
  std::vector<Edge> made_;
  std::set<std::pair<std::size_t, std::size_t>> joined_;
  std::set<std::size_t> used_;
  std::set<std::size_t> lineEnds_;
};

}  // namespace KorvaniTools
