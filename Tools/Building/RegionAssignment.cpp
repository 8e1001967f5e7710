#include "Building/RegionAssignment.hpp"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

#include "Building/BuildingError.hpp"
#include "Building/JsonText.hpp"

namespace KorvaniTools {
namespace {

using RegionIndexes = std::vector<std::size_t>;

/// A building's regions by name and by level.
class RegionLookup {
 public:
  RegionLookup(const Building& building, const std::string& file)
      : regions_(building.regions), file_(file) {
    for (std::size_t i = 0; i < regions_.size(); ++i) {
      if (regions_[i].name) byName_.emplace(*regions_[i].name, i);
      byLevel_[regions_[i].level].push_back(i);
    }
  }

  /// The region of that name, which a feature of `level` asks for.
  std::size_t named(const std::string& name, std::int64_t level, std::size_t feature,
                    const char* owner) const {
    const std::string subject = std::string("region of ") + owner;
    const auto found = byName_.find(name);
    if (found == byName_.end()) {
      throw BuildingError(file_, feature, subject, inQuotes(name), "the name of a region");
    }
    const std::int64_t regionLevel = regions_[found->second].level;
    if (regionLevel != level) {
      throw BuildingError(file_, feature, subject,
                          inQuotes(name) + " of level " + std::to_string(regionLevel),
                          "a region of level " + std::to_string(level));
    }
    return found->second;
  }

  /// The regions of that level in their order; empty when it has none.
  const RegionIndexes& ofLevel(std::int64_t level) const {
    static const RegionIndexes kNone;
    const auto found = byLevel_.find(level);
    return found == byLevel_.end() ? kNone : found->second;
  }

 private:
  const std::vector<BuildingRegion>& regions_;
  const std::string& file_;
  std::map<std::string, std::size_t> byName_;
  std::map<std::int64_t, RegionIndexes> byLevel_;
};

Rectangle boxOf(const ObstacleLine& line) {
  Rectangle box;
  for (const Coordinate& position : line.positions) box.include(position);
  return box;
}

void makeMissingRegions(Building& building) {
  std::map<std::int64_t, Rectangle> boxes;
  for (const BuildingNode& node : building.nodes) boxes[node.level].include(node.coordinate);
  for (const BuildingObstacle& obstacle : building.obstacles) {
    for (const ObstacleLine& line : obstacle.lines) boxes[obstacle.level].include(boxOf(line));
  }
  for (const BuildingRegion& region : building.regions) boxes.erase(region.level);
  for (const auto& [level, box] : boxes) {
    building.regions.push_back({level, {}, box, true});
    building.summary.madeRegions.push_back(level);
  }
}

std::size_t nearestCorner(const Building& building, const RegionIndexes& candidates,
                          Coordinate coordinate) {
  std::size_t nearest = candidates.front();
  double shortest = std::numeric_limits<double>::infinity();
  for (const std::size_t index : candidates) {
    const Rectangle& rectangle = building.regions[index].rectangle;
    const double distance =
        std::min(KorvaniPlatform::greatCircleDistance(coordinate, rectangle.southWest),
                 KorvaniPlatform::greatCircleDistance(coordinate, rectangle.northEast));
    if (distance < shortest) {
      shortest = distance;
      nearest = index;
    }
  }
  return nearest;
}

std::size_t regionOf(const BuildingNode& node, const Building& building,
                     const RegionLookup& regions) {
  if (node.regionName) return regions.named(*node.regionName, node.level, node.feature, "a node");
  const RegionIndexes& candidates = regions.ofLevel(node.level);
  for (const std::size_t index : candidates) {
    if (building.regions[index].rectangle.contains(node.coordinate)) return index;
  }
  return nearestCorner(building, candidates, node.coordinate);
}

RegionIndexes regionsTouching(const Building& building, const RegionIndexes& candidates,
                              const Rectangle& box) {
  RegionIndexes touched;
  for (const std::size_t index : candidates) {
    if (building.regions[index].rectangle.touches(box)) touched.push_back(index);
  }
  return touched;
}

void assignObstacle(BuildingObstacle& obstacle, Building& building, const RegionLookup& regions) {
  if (obstacle.regionName) {
    const std::size_t index =
        regions.named(*obstacle.regionName, obstacle.level, obstacle.feature, "an obstacle");
    for (ObstacleLine& line : obstacle.lines) line.regions = {index};
    return;
  }
  const RegionIndexes& candidates = regions.ofLevel(obstacle.level);
  for (ObstacleLine& line : obstacle.lines) {
    line.regions = regionsTouching(building, candidates, boxOf(line));
  }
  const auto dropped =
      std::stable_partition(obstacle.lines.begin(), obstacle.lines.end(),
                            [](const ObstacleLine& line) { return !line.regions.empty(); });
  for (auto line = dropped; line != obstacle.lines.end(); ++line) {
    obstacle.droppedLines.push_back(std::move(line->positions));
  }
  obstacle.lines.erase(dropped, obstacle.lines.end());
  building.summary.droppedObstacleLines += obstacle.droppedLines.size();
}

}  // namespace

void assignRegions(Building& building, const std::string& file) {
  makeMissingRegions(building);
  const RegionLookup regions(building, file);
  for (BuildingNode& node : building.nodes) node.region = regionOf(node, building, regions);
  for (BuildingObstacle& obstacle : building.obstacles) {
    assignObstacle(obstacle, building, regions);
  }
}

}  // namespace KorvaniTools
