#include "Buildings/BuildingFile.hpp"

#include <cstdint>
#include <utility>

#include "Building/Building.hpp"
#include "Building/BuildingText.hpp"
#include "Buildings/BuildingMaker.hpp"

namespace KorvaniBenchmarks {

namespace {

bool areOneWayAndBack(const PlainBuilding::Edge& edge, const PlainBuilding::Edge& next) {
  return edge.from == next.to && edge.to == next.from && edge.distance == next.distance;
}

KorvaniTools::BuildingEdge featureOf(const PlainBuilding::Edge& edge, bool oneway) {
  KorvaniTools::BuildingEdge feature;
  feature.from = edge.from;
  feature.to = edge.to;
  feature.oneway = oneway;
  feature.distance = edge.distance;
  feature.multiplicator = edge.multiplicator;
  feature.barrierFree = edge.barrierFree;
  return feature;
}

void addEdges(const PlainBuilding& building, KorvaniTools::Building& file) {
  const auto& edges = building.edges;
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const bool both = i + 1 < edges.size() && areOneWayAndBack(edges[i], edges[i + 1]);
    file.edges.push_back(featureOf(edges[i], !both));
    if (both) ++i;
  }
}

}  // namespace

std::string buildingFileText(const PlainBuilding& building) {
  KorvaniTools::Building file;
  for (const PlainBuilding::Level& level : building.levels) {
    KorvaniTools::BuildingRegion region;
    region.level = level.number;
    region.rectangle = {level.southWest, level.northEast};
    file.regions.push_back(std::move(region));
  }
  for (const PlainBuilding::Node& node : building.nodes) {
    KorvaniTools::BuildingNode feature;
    feature.id = static_cast<std::int64_t>(file.nodes.size());
    feature.level = node.level;
    feature.coordinate = node.coordinate;
    file.nodes.push_back(std::move(feature));
  }
  addEdges(building, file);
  for (const PlainBuilding::Wall& wall : building.walls) {
    KorvaniTools::BuildingObstacle obstacle;
    obstacle.level = wall.level;
    obstacle.lines.push_back({wall.line, {}});
    file.obstacles.push_back(std::move(obstacle));
  }
  return KorvaniTools::buildingText(file);
}

PlainBuilding makeOfficesOfFeatures(std::size_t features) {
  constexpr double kFeaturesPerNode = 3.45;
  constexpr std::size_t kLevels = 5;
  const double nodes = static_cast<double>(features) / kFeaturesPerNode;
  return makeOffices(static_cast<std::size_t>(nodes), kLevels, features);
}

}  // namespace KorvaniBenchmarks
