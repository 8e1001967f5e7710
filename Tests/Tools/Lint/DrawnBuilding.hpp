#pragma once

/// Buildings for tests of lint, drawn as text:
///
///     DrawnBuilding drawn;                       // a cell is 1 m wide and 1 m high
///     drawn.level(0, R"(
///     A--B  C
///     )");
///     drawn.join("B", "C", {.oneway = true}).place("Desk", 0, 4, 0);
///     EXPECT_THAT(found(drawn, "one-way-trap"), ElementsAre(...));
///
/// Signs are those of TextDrawing: letters and digits are nodes, lines of `-` and `|` between two
/// are edges both ways, runs of `#` are walls. Ids are 1, 2, ... in reading order, level after
/// level. Each level gets a region that covers its drawing, half a cell beyond its cells. Features
/// are counted in the order in which things are added: of a level first the region, then its nodes,
/// walls and edges.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Building/Building.hpp"
#include "Building/RegionAssignment.hpp"
#include "Lint/Lint.hpp"
#include "Support/Points.hpp"
#include "Support/TextDrawing.hpp"

namespace KorvaniTest {

using KorvaniTools::Building;
using KorvaniTools::Coordinate;
using KorvaniTools::LintFinding;
using KorvaniTools::LintOptions;
using KorvaniTools::LintSeverity;

/// What is not to be as in a drawn line.
struct Join {
  bool oneway = false;
  std::optional<double> distance = std::nullopt;
  bool barrierFree = true;
  std::optional<std::string> type = std::nullopt;
};

class DrawnBuilding {
 public:
  explicit DrawnBuilding(double metresPerCell = 1.0) : metresPerCell_(metresPerCell) {}

  DrawnBuilding& level(std::int64_t level, std::string_view drawing) {
    const TextDrawing read(drawing);
    const auto columns = static_cast<double>(read.columns());
    const auto rows = static_cast<double>(read.rows());
    building_.regions.push_back({level,
                                 "Level " + std::to_string(level),
                                 {coordinate(-0.5, rows - 0.5), coordinate(columns - 0.5, -0.5)},
                                 false,
                                 features_++});
    for (const TextDrawing::Node& node : read.nodes()) {
      this->node(std::string(1, node.name), level, node.cell.column, node.cell.row);
    }
    for (const TextDrawing::Wall& wall : read.walls()) {
      this->wall(level, {coordinate(wall.first.column, wall.first.row),
                         coordinate(wall.second.column, wall.second.row)});
    }
    for (const TextDrawing::Line& line : read.lines()) {
      join(std::string(1, line.first), std::string(1, line.second));
    }
    return *this;
  }

  DrawnBuilding& node(const std::string& name, std::int64_t level, double column, double row) {
    const auto id = static_cast<std::int64_t>(building_.nodes.size()) + 1;
    ids_[name] = id;
    building_.nodes.push_back({features_++, id, level, coordinate(column, row), {}, 0});
    return *this;
  }

  DrawnBuilding& wall(std::int64_t level, std::vector<Coordinate> positions) {
    KorvaniTools::BuildingObstacle obstacle;
    obstacle.feature = features_++;
    obstacle.level = level;
    obstacle.lines.push_back({std::move(positions), {}});
    building_.obstacles.push_back(std::move(obstacle));
    return *this;
  }

  DrawnBuilding& join(const std::string& from, const std::string& to, const Join& join = {}) {
    building_.edges.push_back({features_++, id(from), id(to), join.oneway, join.distance, 1.0,
                               join.barrierFree, join.type});
    return *this;
  }

  DrawnBuilding& place(const std::string& name, std::int64_t level, double column, double row,
                       bool entrance = false) {
    KorvaniTools::Place place;
    place.name = name;
    place.level = level;
    place.coordinate = coordinate(column, row);
    place.entrance = entrance;
    place.feature = features_++;
    building_.places.push_back(std::move(place));
    return *this;
  }

  std::int64_t id(const std::string& name) const { return ids_.at(name); }

  /// Centre of a cell; fractions are allowed.
  Coordinate coordinate(double column, double row) const {
    return fromOrigin(-row * metresPerCell_, column * metresPerCell_);
  }

  /// To change what cannot be drawn.
  Building& contents() { return building_; }

  /// The building as it is read from a file: everything in its regions.
  Building building() const {
    Building building = building_;
    KorvaniTools::assignRegions(building, "drawing");
    return building;
  }

 private:
  double metresPerCell_;
  std::size_t features_ = 0;
  Building building_;
  std::map<std::string, std::int64_t> ids_;
};

/// What the rule of that name finds.
inline std::vector<LintFinding> found(const DrawnBuilding& drawn, const std::string& rule,
                                      LintOptions options = {}) {
  options.only = {rule};
  return KorvaniTools::lintBuilding(drawn.building(), options);
}

/// What all rules find, as "severity rule", in the order of the findings.
inline std::vector<std::string> foundAtAll(const DrawnBuilding& drawn) {
  std::vector<std::string> words;
  for (const LintFinding& finding : KorvaniTools::lintBuilding(drawn.building(), {})) {
    words.push_back(std::string(KorvaniTools::severityName(finding.severity)) + ' ' + finding.rule);
  }
  return words;
}

}  // namespace KorvaniTest
