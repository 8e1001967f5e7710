#include "Peers/BoostMapping.hpp"

#include "Peers/Measures.hpp"

namespace KorvaniBenchmarks {

using KorvaniPlatform::greatCircleDistance;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;

BoostMapping::BoostMapping(const PlainBuilding& building)
    : firstWay_(building.nodes.size() + 1, 0), ways_(building.edges.size() + 1) {
  for (const PlainBuilding::Node& node : building.nodes) {
    places_.push_back({node.coordinate, node.level});
    planePlaces_.push_back(MKMapPointForCoordinate(node.coordinate));
  }
  for (const PlainBuilding::Edge& edge : building.edges) ++firstWay_[edge.from + 1];
  for (std::size_t node = 0; node < building.nodes.size(); ++node) {
    firstWay_[node + 1] += firstWay_[node];
  }
  std::vector<std::size_t> next = firstWay_;
  for (const PlainBuilding::Edge& edge : building.edges) {
    ways_[next[edge.from]++] = {edge.to, edge.distance, edge.multiplicator};
  }
  for (const PlainBuilding::Level& level : building.levels) {
    levels_.push_back(std::make_unique<BoostLevel>(building, level.number));
  }
}

BoostMapping::~BoostMapping() = default;

std::optional<MappedPlace> BoostMapping::map(const LevelPlace& position) const {
  const auto candidates = level(position.level).inSightOf(position.coordinate);
  if (candidates.empty()) return std::nullopt;
  const PlanePoint onPlane = MKMapPointForCoordinate(position.coordinate);
  const VisibleNode& nearest = candidates.front();
  MappedPlace best{nearest.distance, places_[nearest.node].coordinate, nearest.node, {}};
  for (const VisibleNode& candidate : candidates) {
    for (const Way& way : waysOf(candidate.node)) {
      if (places_[way.to].level != places_[candidate.node].level) continue;
      if (!isWorthLookingAt(position.coordinate, candidate, way)) continue;
      bool askedWalls = false;
      const auto foot = project(position, onPlane, candidate.node, way.to, askedWalls);
      if (foot && foot->distance < best.distance) best = *foot;
    }
  }
  return best;
}

bool BoostMapping::isWorthLookingAt(Coordinate position, const VisibleNode& candidate,
                                    const Way& way) const {
  const Coordinate near = places_[candidate.node].coordinate;
  const Coordinate far = places_[way.to].coordinate;
  const double toNode = degreeDistance(position, near);
  const double detour = toNode + degreeDistance(position, far) - degreeDistance(near, far);
  if (detour > kReach * toNode) return false;
  const double farDistance = greatCircleDistance(far, position);
  return candidate.distance * 1.2 > candidate.distance + farDistance - way.distance;
}

std::optional<MappedPlace> BoostMapping::project(const LevelPlace& position, PlanePoint onPlane,
                                                 std::uint32_t node, std::uint32_t other,
                                                 bool& askedWalls) const {
  const PlanePoint foot = footOn(onPlane, planePlaces_[node], planePlaces_[other]);
  const Coordinate place = MKCoordinateForMapPoint(foot);
  if (!isBetween(place, places_[node].coordinate, places_[other].coordinate)) return std::nullopt;
  askedWalls = true;
  if (level(position.level).walls().meet({foot, onPlane})) return std::nullopt;
  return MappedPlace{greatCircleDistance(place, position.coordinate), place, node, other};
}

std::optional<MappedPlace> BoostMapping::mapOnto(std::uint32_t node, const LevelPlace& position,
                                                 const BoostWalls& nodeWalls,
                                                 bool& usedOwnWalls) const {
  const PlanePoint onPlane = MKMapPointForCoordinate(position.coordinate);
  const Coordinate place = places_[node].coordinate;
  std::optional<MappedPlace> best;
  if (!nodeWalls.meet({onPlane, planePlaces_[node]})) {
    best = MappedPlace{greatCircleDistance(place, position.coordinate), place, node, {}};
  }
  for (const Way& way : waysOf(node)) {
    if (places_[way.to].level != places_[node].level) continue;
    const auto foot = project(position, onPlane, node, way.to, usedOwnWalls);
    if (foot && (!best || foot->distance < best->distance)) best = foot;
  }
  return best;
}

std::vector<std::uint32_t> BoostMapping::nodesNear(const LevelPlace& destination,
                                                   std::size_t most) const {
  std::vector<std::uint32_t> nodes;
  const auto near = level(destination.level).inSightOf(destination.coordinate);
  if (near.empty()) return nodes;
  const double nearest = near.front().distance;
  for (const VisibleNode& candidate : near) {
    if (nodes.size() >= most || candidate.distance > nearest * 1.2) break;
    nodes.push_back(candidate.node);
    if (nearest > 10.0) break;
  }
  return nodes;
}

}  // namespace KorvaniBenchmarks
