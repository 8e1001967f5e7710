/// Maps of real buildings as the importers bring them in: how much of them people can be guided
/// through. The figures are those that a map maker would look at first.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Building/BuildingReader.hpp"
#include "Building/BuildingText.hpp"
#include "FloorPlan/PlanBuilding.hpp"
#include "Import/Imdf/ImdfReader.hpp"
#include "Import/Osm/OsmReader.hpp"
#include "Lint/Lint.hpp"
#include "Platform/Location.hpp"
#include "Support/Maps.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using KorvaniTools::BuildingNode;
using KorvaniTools::ConnectionTable;
using KorvaniTools::Coordinate;
using KorvaniTools::FloorPlan;
using KorvaniTools::PlanReport;
using KorvaniTools::Room;

using NodeIds = std::set<std::int64_t>;

/// A building and the plan it was made of.
struct Import {
  FloorPlan plan;
  PlanReport report;
  Building building;
};

class RealMapsImports : public testing::Test {
 protected:
  void SetUp() override { SKIP_WITHOUT_MAPS(); }

  static Import osm(const std::string& file) {
    return imported(KorvaniTools::readOsm(mapFile(file), {}));
  }

  static Import imdf(const std::string& folder) {
    return imported(KorvaniTools::readImdf(mapFile(folder), {}));
  }

 private:
  /// As the command does it: what is judged is what a file would hold.
  static Import imported(FloorPlan plan) {
    Import import;
    import.plan = std::move(plan);
    const Building made = makeBuilding(import.plan, ConnectionTable::standard(), {}, import.report);
    import.building = KorvaniTools::parseBuilding(buildingText(made), "imported");
    return import;
  }
};

/// Where every node leads to.
std::map<std::int64_t, NodeIds> waysOf(const Building& building) {
  std::map<std::int64_t, NodeIds> ways;
  for (const auto& edge : building.edges) {
    ways[edge.from].insert(edge.to);
    if (!edge.oneway) ways[edge.to].insert(edge.from);
  }
  return ways;
}

NodeIds reachedFrom(const Building& building, const NodeIds& starts) {
  auto ways = waysOf(building);
  NodeIds reached = starts;
  std::vector<std::int64_t> open(starts.begin(), starts.end());
  while (!open.empty()) {
    const std::int64_t node = open.back();
    open.pop_back();
    for (const std::int64_t next : ways[node]) {
      if (reached.insert(next).second) open.push_back(next);
    }
  }
  return reached;
}

/// The nodes of the largest group that edges join, whatever their direction.
NodeIds largestComponent(Building building) {
  for (auto& edge : building.edges) edge.oneway = false;
  NodeIds largest;
  NodeIds seen;
  for (const BuildingNode& node : building.nodes) {
    if (seen.contains(node.id)) continue;
    const NodeIds component = reachedFrom(building, {node.id});
    seen.insert(component.begin(), component.end());
    if (component.size() > largest.size()) largest = component;
  }
  return largest;
}

Building turnedAround(Building building) {
  for (auto& edge : building.edges) std::swap(edge.from, edge.to);
  return building;
}

/// The nodes of the largest group in which one gets from everywhere to everywhere as the edges
/// lead, which is what routes and lint go by.
NodeIds mainNetwork(const Building& building) {
  const Building back = turnedAround(building);
  NodeIds largest;
  NodeIds seen;
  for (const BuildingNode& node : building.nodes) {
    if (seen.contains(node.id)) continue;
    const NodeIds to = reachedFrom(building, {node.id});
    const NodeIds from = reachedFrom(back, {node.id});
    NodeIds group;
    std::set_intersection(to.begin(), to.end(), from.begin(), from.end(),
                          std::inserter(group, group.end()));
    seen.insert(group.begin(), group.end());
    if (group.size() > largest.size()) largest = group;
  }
  return largest;
}

double metresBetween(Coordinate a, Coordinate b) {
  return KorvaniPlatform::greatCircleDistance(a, b);
}

/// The nodes of the entrances; each lies where its place is.
NodeIds entranceNodes(const Building& building) {
  NodeIds nodes;
  for (const auto& place : building.places) {
    if (!place.entrance) continue;
    for (const BuildingNode& node : building.nodes) {
      const bool here = metresBetween(node.coordinate, place.coordinate) < 0.05;
      if (here && node.level == place.level) nodes.insert(node.id);
    }
  }
  return nodes;
}

/// Whether `coordinate` lies in the outline and in no hole: by the parity of borders to the east.
bool contains(const Room& room, Coordinate coordinate) {
  bool inside = false;
  for (const auto& ring : room.rings) {
    for (std::size_t i = 0, before = ring.size() - 1; i < ring.size(); before = i++) {
      const Coordinate a = ring[before];
      const Coordinate b = ring[i];
      if ((a.latitude > coordinate.latitude) == (b.latitude > coordinate.latitude)) continue;
      const double share = (coordinate.latitude - a.latitude) / (b.latitude - a.latitude);
      if (coordinate.longitude < a.longitude + share * (b.longitude - a.longitude)) {
        inside = !inside;
      }
    }
  }
  return inside;
}

/// Of the rooms with a name, the share in which a node of `nodes` lies.
double shareOfNamedRooms(const Building& building, const NodeIds& nodes) {
  std::size_t named = 0;
  std::size_t reached = 0;
  for (const Room& room : building.rooms) {
    if (!room.name) continue;
    ++named;
    reached += std::any_of(building.nodes.begin(), building.nodes.end(), [&](const auto& node) {
      return node.level == room.level && nodes.contains(node.id) && contains(room, node.coordinate);
    });
  }
  EXPECT_GT(named, 0U);
  return static_cast<double>(reached) / static_cast<double>(named);
}

/// Of the nodes of drawn lines, the share that is in `nodes`.
double shareOfLineNetwork(const Import& import, const NodeIds& nodes) {
  std::set<std::pair<double, double>> corners;
  for (const auto& line : import.plan.lines) {
    for (const auto& vertex : line.vertices) {
      corners.insert({vertex.coordinate.latitude, vertex.coordinate.longitude});
    }
  }
  std::size_t all = 0;
  std::size_t joined = 0;
  for (const BuildingNode& node : import.building.nodes) {
    if (!corners.contains({node.coordinate.latitude, node.coordinate.longitude})) continue;
    ++all;
    joined += nodes.contains(node.id);
  }
  EXPECT_GE(all, import.report.lineNodes * 95 / 100);
  return static_cast<double>(joined) / static_cast<double>(all);
}

/// Edges that the engine would not let anybody walk are named by lint, and under 1 %.
void expectEdgesKeepOffWalls(const Building& building) {
  const auto findings = lintBuilding(building, {{"edge-through-wall"}, {}});
  std::size_t edges = 0;
  for (const auto& finding : findings) edges += finding.edges.size();
  EXPECT_LT(static_cast<double>(edges), 0.01 * static_cast<double>(building.edges.size()));
}

TEST_F(RealMapsImports, AUniversityBuildingOfAreasAndDoorsIsReachedFromItsEntrances) {
  const Import import = osm("tu-dresden-apb/APBorig.osm");
  const NodeIds entrances = entranceNodes(import.building);
  EXPECT_GE(entrances.size(), 3U);
  EXPECT_GE(shareOfNamedRooms(import.building, reachedFrom(import.building, entrances)), 0.95);
  expectEdgesKeepOffWalls(import.building);
}

TEST_F(RealMapsImports, AUniversityBuildingKeepsItsHalfLevels) {
  const Import import = osm("tu-dresden-apb/APBorig.osm");
  std::map<std::string, std::int64_t> levels;
  for (const auto& level : import.building.levelNames) levels[*level.source] = level.level;
  EXPECT_LT(levels.at("-1"), levels.at("0"));
  EXPECT_LT(levels.at("0"), levels.at("1"));
  EXPECT_LT(levels.at("1"), levels.at("2"));
  EXPECT_LT(levels.at("2"), levels.at("3"));
}

TEST_F(RealMapsImports, AStationOfLinesHangsTogetherIfDirectionsAreIgnored) {
  const Import import = osm("berlin-hbf/berlin_hbf.osm");
  EXPECT_GE(import.report.lineNodes, 489U);
  EXPECT_GE(shareOfLineNetwork(import, largestComponent(import.building)), 0.95);
  expectEdgesKeepOffWalls(import.building);
}

// What is left out are eight pieces of platform that the map draws with one-way escalators only,
// all of them leading away or all of them towards it.
TEST_F(RealMapsImports, AStationOfLinesIsWalkedBothWaysButForEndsThatOnlyEscalatorsReach) {
  const Import import = osm("berlin-hbf/berlin_hbf.osm");
  EXPECT_GE(shareOfLineNetwork(import, mainNetwork(import.building)), 0.88);
}

TEST_F(RealMapsImports, ACampusArchiveIsReachedFromItsLargestPart) {
  const Import import = imdf("spb-polytech-imdf");
  EXPECT_EQ(import.plan.levels.size(), 6U);
  EXPECT_GE(shareOfNamedRooms(import.building, largestComponent(import.building)), 0.95);
  expectEdgesKeepOffWalls(import.building);
}

}  // namespace
}  // namespace KorvaniTest
