#include "Building/BuildingGraph.hpp"

#include <unordered_map>
#include <vector>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::KRVNavRegion;

using Regions = std::vector<std::shared_ptr<KRVNavRegion>>;
using Points = std::unordered_map<std::int64_t, std::shared_ptr<KRVNavPoint>>;

Regions addRegions(const Building& building, KRVNavGraph& graph) {
  Regions regions;
  regions.reserve(building.regions.size());
  for (const BuildingRegion& source : building.regions) {
    auto region = std::make_shared<KRVNavRegion>(source.level);
    region->setSouthWestCoordinate(source.rectangle.southWest);
    region->setNorthEastCoordinate(source.rectangle.northEast);
    graph.add(region);
    regions.push_back(std::move(region));
  }
  return regions;
}

Points addNodes(const Building& building, const Regions& regions) {
  Points points;
  points.reserve(building.nodes.size());
  for (const BuildingNode& source : building.nodes) {
    auto point = std::make_shared<KRVNavPoint>(source.coordinate, source.level, source.id);
    regions[source.region]->addNode(point);
    points.emplace(source.id, std::move(point));
  }
  return points;
}

void addDirection(const BuildingEdge& source, const std::shared_ptr<KRVNavPoint>& from,
                  const std::shared_ptr<KRVNavPoint>& to, KRVNavGraph& graph) {
  const double distance = source.distance ? *source.distance : from->distanceFrom(*to);
  graph.addEdge(std::make_shared<KRVNavEdge>(from, to, distance, source.multiplicator,
                                             source.barrierFree, source.type),
                *from, *to);
}

void addEdges(const Building& building, const Points& points, KRVNavGraph& graph) {
  for (const BuildingEdge& source : building.edges) {
    const auto& from = points.at(source.from);
    const auto& to = points.at(source.to);
    addDirection(source, from, to, graph);
    if (!source.oneway) addDirection(source, to, from, graph);
  }
}

void addObstacles(const Building& building, const Regions& regions) {
  for (const BuildingObstacle& source : building.obstacles) {
    for (const ObstacleLine& line : source.lines) {
      const auto obstacle = std::make_shared<KRVNavObstacle>(line.positions, source.strength);
      for (const std::size_t index : line.regions) regions[index]->addObstacle(obstacle);
    }
  }
}

}  // namespace

std::shared_ptr<KRVNavGraph> makeGraph(const Building& building) {
  auto graph = std::make_shared<KRVNavGraph>();
  const Regions regions = addRegions(building, *graph);
  const Points points = addNodes(building, regions);
  addEdges(building, points, *graph);
  addObstacles(building, regions);
  return graph;
}

}  // namespace KorvaniTools
