#include "FloorPlan/SpaceJoin.hpp"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

#include "FloorPlan/SpaceGraph.hpp"

namespace KorvaniTools {
namespace {

constexpr double kLeastLines = 2.0;       // metres
constexpr double kLeastShare = 0.3;       // of the space's extent
constexpr std::size_t kMostTargets = 50;  // looked at for each item
constexpr double kOnOutline = 0.15;
constexpr double kAtLine = 0.1;
constexpr double kOnDrawn = 0.02;  // metres; what rounding moves a node off a line

double extentOf(const Geos& geos, const Shape& shape) {
  const BoundingBox box = boxOf(geos.ringsOf(shape).front());
  return groundDistance(box.low, box.high);
}

/// What people are led to: any point of a line, or the end of stairs.
struct Target {
  GroundPoint a;
  GroundPoint b;
  std::size_t part = 0;
  std::optional<std::size_t> drawn;  ///< the line
  std::size_t node = 0;              ///< else the end of stairs

  GroundPoint nearest(GroundPoint at) const { return between(a, b, nearestShare(at, a, b)); }
  double distance(GroundPoint at) const { return groundDistance(at, nearest(at)); }
};

class Joiner {
 public:
  Joiner(const FloorSpace& space, const SpaceSight& sight, const Geos& geos, StepFree stepFree,
         const LineParts& parts, PlanGraph& graph)
      : space_(space),
        sight_(sight),
        geos_(geos),
        stepFree_(stepFree),
        parts_(parts),
        graph_(graph) {
    for (const SpacePiece& piece : space.pieces) {
      const PlanGraph::Edge& edge = graph.drawn()[piece.drawn];
      if (!isWalkedOn(edge.kind)) continue;
      targets_.push_back({piece.a, piece.b, parts.of(edge.from), piece.drawn, 0});
    }
    std::vector<Shape> outline;
    for (const GroundLine& ring : geos.ringsOf(space.shape)) outline.push_back(geos.line(ring));
    for (const std::size_t node : space.lineNodes) {
      if (!liesIn(node, outline)) continue;
      feet_.push_back(node);
      const GroundPoint at = graph.nodes()[node].at;
      if (!endsLine(node)) targets_.push_back({at, at, parts.of(node), std::nullopt, node});
    }
  }

  void join() {
    std::vector<SpaceItem> left = space_.items;
    const bool ruled = linesRule();
    if (ruled) {
      left.erase(std::remove_if(left.begin(), left.end(),
                                [&](const SpaceItem& item) { return joinToLine(item); }),
                 left.end());
      joinParts();
    }
    const bool joined = ruled || space_.items.empty();
    if (left.empty() && joined && hangTogether()) return;
    stopInside();
    SpaceGraph(space_, sight_, geos_, graph_).join(left, stepFree_, lines(ruled));
  }

 private:
  bool linesRule() const {
    double length = 0;
    for (const Target& target : targets_) length += groundDistance(target.a, target.b);
    return length >= kLeastLines && length >= kLeastShare * extentOf(geos_, space_.shape);
  }

  // What lies on a room's outline may well belong to the other side of the wall.
  bool liesIn(std::size_t node, const std::vector<Shape>& outline) const {
    if (parts_.amidStairs(node)) return false;
    if (endsLine(node)) return true;
    const GroundPoint at = graph_.nodes()[node].at;
    if (!space_.cell) return sight_.holds(at);
    return std::none_of(outline.begin(), outline.end(), [&](const Shape& ring) {
      return geos_.distance(geos_.point(at), ring) < kOnOutline;
    });
  }

  /// Whether a line leads on from the node within the space.
  bool endsLine(std::size_t node) const {
    return std::any_of(targets_.begin(), targets_.end(), [&](const Target& target) {
      if (!target.drawn || target.distance(graph_.nodes()[node].at) > kAtLine) return false;
      const std::vector<std::size_t> stops = graph_.stopsOf(*target.drawn);
      return std::find(stops.begin(), stops.end(), node) != stops.end();
    });
  }

  /// Joins the item to the nearest point of a line that it sees, unless stairs end nearer by.
  bool joinToLine(const SpaceItem& item) {
    if (endsLine(item.node)) return true;
    std::vector<std::pair<double, std::size_t>> order;
    order.reserve(targets_.size());
    for (std::size_t i = 0; i < targets_.size(); ++i) {
      const bool itself = !targets_[i].drawn && targets_[i].node == item.node;
      if (!itself) order.emplace_back(targets_[i].distance(item.at), i);
    }
    std::sort(order.begin(), order.end());
    if (order.size() > kMostTargets) order.resize(kMostTargets);
    for (const auto& [distance, i] : order) {
      // From door to door by the end of stairs would be a detour.
      if (!targets_[i].drawn && sight_.sees(item.at, targets_[i].a)) return false;
      if (targets_[i].drawn && joinTo(targets_[i], item)) return true;
    }
    return false;
  }

  bool joinTo(const Target& target, const SpaceItem& item) {
    for (const GroundPoint at :
         {target.nearest(item.at), between(target.a, target.b, 0.5), target.a, target.b}) {
      if (!sight_.sees(item.at, at)) continue;
      const std::size_t stop = target.drawn ? stopOn(*target.drawn, at, item) : target.node;
      const ConnectionKind kind = item.door ? ConnectionKind::door : ConnectionKind::path;
      const StepFree free = stepFree_ == StepFree::no ? stepFree_ : item.stepFree;
      graph_.addMade({item.node, stop, kind, free, false});
      if (parts_.knows(item.node)) unite(parts_.of(item.node), target.part);
      return true;
    }
    return false;
  }

  // What lies on the line but for rounding is a stop of it.
  std::size_t stopOn(std::size_t drawn, GroundPoint at, const SpaceItem& item) {
    const double share = shareOf(drawn, at);
    if (groundDistance(item.at, at) > kOnDrawn) return graph_.stopOn(drawn, share);
    return graph_.stopAt(drawn, share, item.node);
  }

  /// Leads each part of the lines to the nearest other one that it sees.
  void joinParts() {
    using Way = std::tuple<double, std::size_t, std::size_t>;  // length, node, target
    std::vector<Way> ways;
    for (const std::size_t node : feet_) {
      std::vector<Way> own;
      own.reserve(targets_.size());
      for (std::size_t i = 0; i < targets_.size(); ++i) {
        if (joined(node, targets_[i])) continue;
        own.emplace_back(targets_[i].distance(graph_.nodes()[node].at), node, i);
      }
      std::sort(own.begin(), own.end());
      if (own.size() > kMostTargets) own.resize(kMostTargets);
      ways.insert(ways.end(), own.begin(), own.end());
    }
    std::sort(ways.begin(), ways.end());
    for (const auto& [length, node, i] : ways) {
      if (joined(node, targets_[i])) continue;
      const GroundPoint at = graph_.nodes()[node].at;
      joinTo(targets_[i], {node, at, false, std::nullopt, StepFree::unknown});
    }
  }

  bool joined(std::size_t node, const Target& target) const {
    return groupOf(parts_.of(node)) == groupOf(target.part);
  }

  bool hangTogether() const {
    return std::all_of(feet_.begin(), feet_.end(), [&](std::size_t node) {
      return groupOf(parts_.of(node)) == groupOf(parts_.of(feet_.front()));
    });
  }

  /// Gives lines that only pass through a node in the middle.
  void stopInside() {
    for (const Target& target : targets_) {
      if (!target.drawn) continue;
      const PlanGraph::Edge& edge = graph_.drawn()[*target.drawn];
      const bool held =
          std::any_of(space_.lineNodes.begin(), space_.lineNodes.end(),
                      [&](std::size_t node) { return node == edge.from || node == edge.to; });
      if (held) continue;
      graph_.stopOn(*target.drawn, shareOf(*target.drawn, between(target.a, target.b, 0.5)));
    }
  }

  SpaceLines lines(bool ruled) const {
    SpaceLines lines;
    lines.needed.insert(feet_.begin(), feet_.end());
    for (const std::size_t node : space_.lineNodes) {
      if (parts_.amidStairs(node)) lines.amid.insert(node);
      if (ruled) lines.groups.emplace(node, groupOf(parts_.of(node)));
    }
    for (const SpacePiece& piece : space_.pieces) {
      if (!ruled) break;
      const std::size_t group = groupOf(parts_.of(graph_.drawn()[piece.drawn].from));
      for (const std::size_t stop : graph_.stopsOf(piece.drawn)) lines.groups.emplace(stop, group);
    }
    return lines;
  }

  double shareOf(std::size_t drawn, GroundPoint at) const {
    const PlanGraph::Edge& edge = graph_.drawn()[drawn];
    return nearestShare(at, graph_.nodes()[edge.from].at, graph_.nodes()[edge.to].at);
  }

  std::size_t groupOf(std::size_t part) const {
    for (auto next = united_.find(part); next != united_.end(); next = united_.find(part)) {
      part = next->second;
    }
    return part;
  }

  void unite(std::size_t a, std::size_t b) {
    const auto [low, high] = std::minmax({groupOf(a), groupOf(b)});
    if (low != high) united_.emplace(high, low);
  }

  const FloorSpace& space_;
  const SpaceSight& sight_;
  const Geos& geos_;
  StepFree stepFree_;
  const LineParts& parts_;
  PlanGraph& graph_;
  std::vector<Target> targets_;
  std::vector<std::size_t> feet_;              ///< where lines are stepped on in the space
  std::map<std::size_t, std::size_t> united_;  ///< part -> one that it has been joined with
};

}  // namespace

void joinSpace(const FloorSpace& space, const FloorSight& sight, const Geos& geos,
               StepFree stepFree, const LineParts& parts, PlanGraph& graph) {
  if (space.items.empty() && space.lineNodes.size() < 2) return;
  const SpaceSight within(geos, sight, space.shape);
  Joiner(space, within, geos, stepFree, parts, graph).join();
}

}  // namespace KorvaniTools
