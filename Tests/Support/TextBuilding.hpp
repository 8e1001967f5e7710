#pragma once

/// A building for tests, drawn as text.
///
///     TextBuilding building(2.0);              // a cell is 2 m wide and 2 m high
///     building.addLevel(0, R"(
///     #########
///     #A--B   #
///     #   |   #
///     #   C---D
///     #########)");
///     building.addLevel(1, R"(
///             E)");
///     building.connect("D", "E", {.distance = 6, .multiplicator = 2, .isBarrierFree = false});
///     navigation.provideGraph(building.graph());
///     route(building.point("A"), building.point("E"));
///
/// Signs:
///   - a letter or digit is a node of that name, unique in the whole building;
///   - a run of `-` or `|` between two nodes joins them, both ways, by edges that are as long as
///     KRVNavPoint::distanceFrom says, with multiplicator 1, barrier-free, without type. Nodes in
///     neighbouring cells are not joined by standing there;
///   - a run of two or more `#` in a row or a column is a wall from the centre of its first cell
///     to the centre of its last, an obstacle of its own with strength 0; a corner belongs to both
///     its walls. A `#` on its own is a wall from its cell's western to its eastern side;
///   - a blank or a dot is nothing.
///
/// A line break right behind the opening bracket and blanks before the closing one do not count.
/// Columns count from the beginning of the line, indentation included, so drawings of several
/// levels lie on top of each other when they are written so.
///
/// Column 0, row 0 lies at kOrigin; columns go east and rows south. Identifiers are 1, 2, ... in
/// reading order, level after level as they were added. Each level is a region; its rectangle
/// covers all cells of its drawing, half a cell beyond their centres. Regions, nodes, edges and
/// walls come into the graph in reading order.
///
/// What makes no sense throws std::invalid_argument.

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Support/Points.hpp"
#include "Support/TextDrawing.hpp"

namespace KorvaniTest {

using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavRegion;

/// What is not to be as in a drawn line.
struct Connection {
  std::optional<double> distance = std::nullopt;  ///< metres; absent: the engine's own distance
  double multiplicator = 1.0;
  bool isBarrierFree = true;
  std::optional<std::string> type = std::nullopt;
  bool oneWay = false;
};

class TextBuilding {
 public:
  /// A building without levels.
  explicit TextBuilding(double metresPerCell = 1.0);

  /// A building of level 0 only.
  explicit TextBuilding(std::string_view drawing, double metresPerCell = 1.0);

  /// Draws a level that has not been drawn yet.
  TextBuilding& addLevel(std::int64_t level, std::string_view drawing);

  /// Adds an edge between two nodes, and unless it is one-way one back. It replaces one that was
  /// drawn or added before.
  TextBuilding& connect(const std::string& from, const std::string& to,
                        const Connection& connection = {});

  const std::shared_ptr<KRVNavGraph>& graph() const { return graph_; }
  const std::shared_ptr<KRVNavRegion>& region(std::int64_t level) const;
  const PointPtr& point(const std::string& name) const;
  std::shared_ptr<KRVNavEdge> edge(const std::string& from, const std::string& to) const;

  /// Names of points, for messages and comparisons: "ABD". A point that is no node is "?".
  std::string names(const std::vector<PointPtr>& points) const;

  /// Centre of a cell of a drawn level; fractions and places outside the drawing are allowed.
  CLLocationCoordinate2D coordinate(std::int64_t level, double column, double row) const;

  /// A position there: a point without identifier.
  PointPtr position(std::int64_t level, double column, double row) const;

 private:
  CLLocationCoordinate2D coordinate(TextDrawing::Cell cell) const;
  void setRectangle(KRVNavRegion& region, const TextDrawing& drawing) const;
  void addNodes(KRVNavRegion& region, const TextDrawing& drawing);
  void addWalls(KRVNavRegion& region, const TextDrawing& drawing) const;
  void addEdge(const PointPtr& from, const PointPtr& to, const Connection& connection);

  double metresPerCell_;
  std::shared_ptr<KRVNavGraph> graph_ = std::make_shared<KRVNavGraph>();
  std::map<std::int64_t, std::shared_ptr<KRVNavRegion>> regions_;
  std::map<std::string, PointPtr> points_;
};

}  // namespace KorvaniTest
