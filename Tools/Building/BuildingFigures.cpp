#include "Building/BuildingFigures.hpp"

#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <vector>

namespace KorvaniTools {
namespace {

/// Which nodes are joined, by union and find.
class Groups {
 public:
  explicit Groups(std::size_t count) : parents_(count), sizes_(count, 1) {
    std::iota(parents_.begin(), parents_.end(), std::size_t{0});
  }

  void join(std::size_t a, std::size_t b) {
    a = rootOf(a);
    b = rootOf(b);
    if (a == b) return;
    if (sizes_[a] < sizes_[b]) std::swap(a, b);
    parents_[b] = a;
    sizes_[a] += sizes_[b];
  }

  ComponentFigures figures() const {
    ComponentFigures figures;
    for (std::size_t i = 0; i < parents_.size(); ++i) {
      if (parents_[i] != i) continue;
      ++figures.count;
      figures.largest = std::max(figures.largest, sizes_[i]);
    }
    return figures;
  }

 private:
  std::size_t rootOf(std::size_t index) {
    while (parents_[index] != index) {
      parents_[index] = parents_[parents_[index]];
      index = parents_[index];
    }
    return index;
  }

  std::vector<std::size_t> parents_;
  std::vector<std::size_t> sizes_;
};

void countEdges(const Building& building, BuildingFigures& figures) {
  std::unordered_map<std::int64_t, std::size_t> indexes;
  for (std::size_t i = 0; i < building.nodes.size(); ++i) indexes[building.nodes[i].id] = i;
  Groups all(building.nodes.size());
  Groups stepFree(building.nodes.size());
  for (const BuildingEdge& edge : building.edges) {
    const std::size_t from = indexes.at(edge.from);
    const std::size_t to = indexes.at(edge.to);
    all.join(from, to);
    if (edge.barrierFree) stepFree.join(from, to);
    if (edge.barrierFree) ++figures.barrierFree;
    if (edge.oneway) ++figures.oneway;
    if (edge.type) ++figures.edgeTypes[*edge.type];
    const std::int64_t fromLevel = building.nodes[from].level;
    const std::int64_t toLevel = building.nodes[to].level;
    if (fromLevel == toLevel) {
      ++figures.levels[fromLevel].edges;
    } else {
      ++figures.levels[fromLevel].connections;
      ++figures.levels[toLevel].connections;
    }
  }
  figures.components = all.figures();
  figures.stepFree = stepFree.figures();
}

}  // namespace

BuildingFigures figuresOf(const Building& building) {
  BuildingFigures figures;
  for (const LevelName& name : building.levelNames) figures.levels[name.level];
  for (const BuildingRegion& region : building.regions) ++figures.levels[region.level].regions;
  for (const BuildingNode& node : building.nodes) ++figures.levels[node.level].nodes;
  for (const BuildingObstacle& obstacle : building.obstacles) {
    if (obstacle.lines.empty()) continue;
    ++figures.obstacles;
    ++figures.levels[obstacle.level].obstacles;
  }
  for (const Place& place : building.places) {
    ++figures.levels[place.level].places;
    if (place.entrance) ++figures.entrances;
  }
  for (const Room& room : building.rooms) ++figures.levels[room.level].rooms;
  countEdges(building, figures);
  return figures;
}

}  // namespace KorvaniTools
