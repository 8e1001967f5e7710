#include "Buildings/PeerData.hpp"

namespace KorvaniBenchmarks {

Arcs arcsOf(const PlainBuilding& building, bool barrierFree) {
  Arcs arcs;
  arcs.nodes = building.nodes.size();
  arcs.arcs.reserve(building.edges.size());
  for (const PlainBuilding::Edge& edge : building.edges) {
    if (barrierFree && !edge.barrierFree) continue;
    arcs.arcs.push_back({edge.from, edge.to, edge.cost()});
  }
  return arcs;
}

PlaneLines planeLinesOf(const PlainBuilding& building, std::int64_t level) {
  PlaneLines lines;
  for (const PlainBuilding::Wall& wall : building.walls) {
    if (wall.level != level) continue;
    lines.emplace_back();
    for (const Coordinate& place : wall.line) {
      lines.back().push_back(KorvaniPlatform::MKMapPointForCoordinate(place));
    }
  }
  return lines;
}

}  // namespace KorvaniBenchmarks
