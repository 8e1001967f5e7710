#include "FloorPlan/Shafts.hpp"

#include <algorithm>
#include <optional>

#include "FloorPlan/Floor.hpp"
#include "FloorPlan/Geos.hpp"

namespace KorvaniTools {
namespace {

std::vector<std::size_t> cellsOn(const FloorPlan& plan, const PlanShaft& shaft,
                                 const PlanLevels& levels, std::int64_t level) {
  std::vector<std::size_t> result;
  for (const std::size_t cell : shaft.cells) {
    if (cell >= plan.cells.size()) continue;
    const auto on = levels.of(plan.cells[cell].levels);
    if (std::binary_search(on.begin(), on.end(), level)) result.push_back(cell);
  }
  return result;
}

std::optional<GroundPoint> stopAt(const FloorPlan& plan, const PlanShaft& shaft,
                                  const std::vector<std::size_t>& cells, const LocalFrame& frame,
                                  const Geos& geos) {
  if (shaft.vertex) return frame.metres(shaft.vertex->coordinate);
  for (const std::size_t cell : cells) {
    const Geos::Polygon polygon = cellShape(plan.cells[cell], frame, geos);
    if (const auto inside = geos.innerPoint(polygon.shape)) return inside;
  }
  return std::nullopt;
}

// Stairs that go on upwards from the room where others end meet them there.
std::size_t nodeAt(const PlanShaft& shaft, std::int64_t level, GroundPoint at,
                   const std::vector<ShaftStop>& stops, PlanGraph& graph) {
  if (shaft.vertex) return graph.nodeAt(shaft.vertex->node, level, at);
  for (const ShaftStop& stop : stops) {
    const bool here =
        stop.level == level && groundDistance(graph.nodes()[stop.node].at, at) < kSameSpot;
    if (here) return stop.node;
  }
  return graph.nodeAt(0, level, at);
}

}  // namespace

std::vector<ShaftStop> addShafts(const FloorPlan& plan, const PlanLevels& levels,
                                 const LocalFrame& frame, const Geos& geos, PlanGraph& graph,
                                 std::vector<std::string>& remarks) {
  std::vector<ShaftStop> stops;
  for (std::size_t i = 0; i < plan.shafts.size(); ++i) {
    const PlanShaft& shaft = plan.shafts[i];
    std::optional<std::size_t> last;
    std::size_t made = 0;
    for (const std::int64_t level : levels.of(shaft.levels)) {
      ShaftStop stop{i, level, 0, cellsOn(plan, shaft, levels, level)};
      const auto at = stopAt(plan, shaft, stop.cells, frame, geos);
      if (!at) continue;
      stop.node = nodeAt(shaft, level, *at, stops, graph);
      ++made;
      if (last) {
        const bool down = shaft.oneway && shaft.backward;
        graph.addMade({down ? stop.node : *last, down ? *last : stop.node, shaft.kind,
                       shaft.stepFree, shaft.oneway});
      }
      last = stop.node;
      stops.push_back(std::move(stop));
    }
    if (made < 2) remarks.push_back(shaft.source + " leads to no other level");
  }
  return stops;
}

}  // namespace KorvaniTools
