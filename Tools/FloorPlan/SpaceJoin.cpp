#include "FloorPlan/SpaceJoin.hpp"

#include <algorithm>
#include <cmath>

#include "FloorPlan/SpaceGraph.hpp"

namespace KorvaniTools {
namespace {

constexpr double kLeastLines = 2.0;      // metres
constexpr double kLeastShare = 0.3;      // of the space's extent
constexpr std::size_t kMostPieces = 50;  // looked at for each item

double extentOf(const Geos& geos, const Shape& shape) {
  const BoundingBox box = boxOf(geos.ringsOf(shape).front());
  return groundDistance(box.low, box.high);
}

bool linesRule(const FloorSpace& space, const Geos& geos) {
  double length = 0;
  for (const SpacePiece& piece : space.pieces) length += groundDistance(piece.a, piece.b);
  return length >= kLeastLines && length >= kLeastShare * extentOf(geos, space.shape);
}

class Joiner {
 public:
  Joiner(const FloorSpace& space, const SpaceSight& sight, StepFree stepFree, PlanGraph& graph)
      : space_(space), sight_(sight), stepFree_(stepFree), graph_(graph) {}

  /// Joins the item to the nearest point of a line that it sees.
  bool joinToLine(const SpaceItem& item) {
    if (std::binary_search(space_.lineNodes.begin(), space_.lineNodes.end(), item.node)) {
      return true;
    }
    std::vector<std::pair<double, std::size_t>> order;
    for (std::size_t i = 0; i < space_.pieces.size(); ++i) {
      order.emplace_back(groundDistance(item.at, nearestOn(space_.pieces[i], item.at)), i);
    }
    std::sort(order.begin(), order.end());
    if (order.size() > kMostPieces) order.resize(kMostPieces);
    for (const auto& [distance, i] : order) {
      const SpacePiece& piece = space_.pieces[i];
      for (const GroundPoint at :
           {nearestOn(piece, item.at), between(piece.a, piece.b, 0.5), piece.a, piece.b}) {
        if (!sight_.sees(item.at, at)) continue;
        joinAt(item, piece, at);
        return true;
      }
    }
    return false;
  }

  /// Gives pieces that only pass through a node in the middle.
  void stopInside() {
    for (const SpacePiece& piece : space_.pieces) {
      const PlanGraph::Edge& edge = graph_.drawn()[piece.drawn];
      const bool held =
          std::any_of(space_.lineNodes.begin(), space_.lineNodes.end(),
                      [&](std::size_t node) { return node == edge.from || node == edge.to; });
      if (!held) graph_.stopOn(piece.drawn, shareOf(piece, between(piece.a, piece.b, 0.5)));
    }
  }

 private:
  static GroundPoint nearestOn(const SpacePiece& piece, GroundPoint at) {
    return between(piece.a, piece.b, nearestShare(at, piece.a, piece.b));
  }

  double shareOf(const SpacePiece& piece, GroundPoint at) const {
    const PlanGraph::Edge& edge = graph_.drawn()[piece.drawn];
    return nearestShare(at, graph_.nodes()[edge.from].at, graph_.nodes()[edge.to].at);
  }

  void joinAt(const SpaceItem& item, const SpacePiece& piece, GroundPoint at) {
    const std::size_t stop = graph_.stopOn(piece.drawn, shareOf(piece, at));
    const ConnectionKind kind = item.door ? ConnectionKind::door : ConnectionKind::path;
    const StepFree free = stepFree_ == StepFree::no ? stepFree_ : item.stepFree;
    graph_.addMade({item.node, stop, kind, free, false});
  }

  const FloorSpace& space_;
  const SpaceSight& sight_;
  StepFree stepFree_;
  PlanGraph& graph_;
};

}  // namespace

void joinSpace(const FloorSpace& space, const FloorSight& sight, const Geos& geos,
               StepFree stepFree, PlanGraph& graph) {
  if (space.items.empty()) return;
  const SpaceSight within(geos, sight, space.shape);
  Joiner joiner(space, within, stepFree, graph);
  const bool ruled = linesRule(space, geos);
  std::vector<SpaceItem> left = space.items;
  if (ruled) {
    left.erase(std::remove_if(left.begin(), left.end(),
                              [&](const SpaceItem& item) { return joiner.joinToLine(item); }),
               left.end());
    if (left.empty()) return;
  }
  joiner.stopInside();
  SpaceGraph(space, within, geos, graph).join(left, stepFree, ruled);
}

}  // namespace KorvaniTools
