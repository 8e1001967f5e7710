#pragma once

/// Floor plans for tests, in metres around a fixed point, and questions about what is made of
/// them.
///
///     Drawing drawing;
///     drawing.room("office", box(0, 0, 4, 4));
///     drawing.area("hall", box(4, 0, 10, 4));
///     drawing.door("door", {4, 2});
///     const Made made = drawing.make();
///     EXPECT_TRUE(made.joined({2, 2}, {8, 2}));

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "FloorPlan/LocalFrame.hpp"
#include "FloorPlan/PlanBuilding.hpp"

namespace KorvaniTest {

using KorvaniTools::GroundLine;
using KorvaniTools::GroundPoint;

inline constexpr KorvaniTools::Coordinate kMiddle{51.0, 13.0};

KorvaniTools::Coordinate at(GroundPoint point);
GroundPoint metres(KorvaniTools::Coordinate coordinate);
GroundLine box(double west, double south, double east, double north);

/// A building, what the report says of it, and where things are.
struct Made {
  KorvaniTools::Building building;
  KorvaniTools::PlanReport report;

  /// The node nearest to a point on a level; -1 when none is within 0.3 m.
  std::int64_t node(GroundPoint point, std::int64_t level = 0) const;
  /// The edge between two nodes, whichever way; null when there is none.
  const KorvaniTools::BuildingEdge* edge(std::int64_t a, std::int64_t b) const;
  /// Length of the cheapest way in metres, directions minded; absent: there is none.
  std::optional<double> way(std::int64_t from, std::int64_t to) const;
  bool joined(GroundPoint from, GroundPoint to, std::int64_t levelFrom = 0,
              std::int64_t levelTo = 0) const;
  /// Whether some wall of the level comes within a centimetre of the point.
  bool wallAt(GroundPoint point, std::int64_t level = 0) const;
  double wallLength(std::int64_t level = 0) const;
  /// Edges of a level that touch one of its walls.
  std::size_t edgesThroughWalls() const;
  std::size_t nodesOn(std::int64_t level) const;
  bool remarked(const std::string& words) const;
};

class Drawing {
 public:
  KorvaniTools::FloorPlan plan;
  KorvaniTools::PlanOptions options;
  KorvaniTools::ConnectionTable table = KorvaniTools::ConnectionTable::standard();

  KorvaniTools::PlanCell& cell(const std::string& source, KorvaniTools::CellKind kind,
                               const GroundLine& ring, KorvaniTools::PlanLevelSet levels = {0});
  /// Walled.
  KorvaniTools::PlanCell& room(const std::string& source, const GroundLine& ring,
                               KorvaniTools::PlanLevelSet levels = {0});
  /// Without walls.
  KorvaniTools::PlanCell& area(const std::string& source, const GroundLine& ring,
                               KorvaniTools::PlanLevelSet levels = {0});
  KorvaniTools::PlanDoor& door(const std::string& source, const GroundLine& line,
                               KorvaniTools::PlanLevelSet levels = {0});
  void wall(const std::string& source, const GroundLine& line,
            KorvaniTools::PlanLevelSet levels = {0});
  /// Vertices with the same position have the same source node.
  KorvaniTools::PlanLine& line(
      const std::string& source, const GroundLine& line, KorvaniTools::PlanLevelSet levels = {0},
      KorvaniTools::ConnectionKind kind = KorvaniTools::ConnectionKind::path);
  KorvaniTools::PlanShaft& shaft(const std::string& source, KorvaniTools::PlanLevelSet levels,
                                 std::optional<GroundPoint> point,
                                 std::vector<std::size_t> cells = {});
  /// The source node at a position.
  std::int64_t key(GroundPoint point);

  Made make() const;

 private:
  std::vector<GroundPoint> keys_;
};

}  // namespace KorvaniTest
