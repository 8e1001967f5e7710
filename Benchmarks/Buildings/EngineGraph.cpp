#include "Buildings/EngineGraph.hpp"

#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"

namespace KorvaniBenchmarks {

using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::KRVNavRegion;

std::shared_ptr<KRVNavGraph> makeEngineGraph(const PlainBuilding& building) {
  auto graph = std::make_shared<KRVNavGraph>();
  std::vector<std::shared_ptr<KRVNavRegion>> regions;
  for (const PlainBuilding::Level& level : building.levels) {
    regions.push_back(std::make_shared<KRVNavRegion>(level.number));
    regions.back()->setSouthWestCoordinate(level.southWest);
    regions.back()->setNorthEastCoordinate(level.northEast);
    graph->add(regions.back());
  }
  std::vector<std::shared_ptr<KRVNavPoint>> points;
  points.reserve(building.nodes.size());
  for (const PlainBuilding::Node& node : building.nodes) {
    const auto identifier = static_cast<std::int64_t>(points.size());
    points.push_back(std::make_shared<KRVNavPoint>(node.coordinate, node.level, identifier));
    regions[static_cast<std::size_t>(node.level)]->addNode(points.back());
  }
  for (const PlainBuilding::Edge& edge : building.edges) {
    const auto& from = points[edge.from];
    const auto& to = points[edge.to];
    graph->addEdge(
        std::make_shared<KRVNavEdge>(from, to, edge.distance, edge.multiplicator, edge.barrierFree),
        *from, *to);
  }
  for (const PlainBuilding::Wall& wall : building.walls) {
    regions[static_cast<std::size_t>(wall.level)]->addObstacle(
        std::make_shared<KRVNavObstacle>(wall.line));
  }
  return graph;
}

std::vector<std::shared_ptr<KRVNavPoint>> pointsOf(const KRVNavGraph& graph) {
  std::vector<std::shared_ptr<KRVNavPoint>> points;
  points.reserve(graph.nodes().size());
  for (const auto& entry : graph.nodes()) points.push_back(entry.second);
  return points;
}

}  // namespace KorvaniBenchmarks
