/// What becomes of archives in the end: graphs.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>

#include "FloorPlan/PlanBuilding.hpp"
#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using KorvaniTools::BuildingEdge;
using KorvaniTools::BuildingNode;

Building built(const TestArchive& archive) {
  KorvaniTools::PlanReport report;
  return KorvaniTools::makeBuilding(archive.read(), KorvaniTools::ConnectionTable::standard(), {},
                                    report);
}

/// How many pieces the graph falls into, one-way edges taken as usable both ways.
std::size_t pieces(const Building& building) {
  std::map<std::int64_t, std::int64_t> parents;
  for (const BuildingNode& node : building.nodes) parents[node.id] = node.id;
  const auto root = [&](std::int64_t node) {
    while (parents[node] != node) node = parents[node];
    return node;
  };
  std::size_t count = building.nodes.size();
  for (const BuildingEdge& edge : building.edges) {
    const auto a = root(edge.from);
    const auto b = root(edge.to);
    if (a != b) --count;
    parents[a] = b;
  }
  return count;
}

struct Climb {
  std::int64_t from = 0;
  std::int64_t to = 0;
  bool oneway = false;
  std::string type;

  bool operator==(const Climb& other) const {
    return from == other.from && to == other.to && oneway == other.oneway && type == other.type;
  }
};

std::ostream& operator<<(std::ostream& stream, const Climb& climb) {
  return stream << climb.from << (climb.oneway ? " -> " : " - ") << climb.to << ' ' << climb.type;
}

/// The edges from one level to another, in order.
std::vector<Climb> climbs(const Building& building) {
  std::map<std::int64_t, std::int64_t> levels;
  for (const BuildingNode& node : building.nodes) levels[node.id] = node.level;
  std::vector<Climb> climbs;
  for (const BuildingEdge& edge : building.edges) {
    if (levels[edge.from] == levels[edge.to]) continue;
    climbs.push_back({levels[edge.from], levels[edge.to], edge.oneway, edge.type.value_or("")});
  }
  return climbs;
}

TEST(ImdfBuildings, LeadFromUnitToUnitThroughOpenings) {
  TestArchive archive;
  archive.floor(0,
                {"AAABBBCCC",  //
                 "AAABBBCCC",  //
                 "AAABBBCCC"},
                {{'A', "office"}, {'B', "walkway"}, {'C', "office"}});
  for (const char* unit : {"A0", "B0", "C0"}) {
    archive.properties("unit", unit)["name"] = {{"en", unit}};
  }
  archive.opening("first", 0, {3, 1}, {3, 2});
  const std::size_t apart = pieces(built(archive));
  archive.opening("second", 0, {6, 1}, {6, 2});
  const Building building = built(archive);
  EXPECT_EQ(pieces(building), 1U);
  EXPECT_EQ(apart, 1U);  // nobody gets into the last office: it has no node
  EXPECT_EQ(building.places.size(), 3U);
  EXPECT_EQ(building.rooms.size(), 3U);
  EXPECT_FALSE(building.obstacles.empty());
}

/// Two buildings that count their floors differently, and a way from one to the other.
TEST(ImdfBuildings, AreJoinedByWaysOutdoors) {
  TestArchive archive;
  archive.floor(0,
                {"AAABBB",  //
                 "AAABBB",  //
                 "AAABBB"},
                {{'A', "office"}, {'B', "lobby"}});
  archive.opening("west", 0, {3, 1}, {3, 2});
  archive.add("level", "hill", boxOf({40, 0}, {50, 3}), {{"ordinal", 1}});
  archive.add("unit", "C", boxOf({40, 0}, {45, 3}), {{"category", "lobby"}, {"level_id", "hill"}});
  archive.add("unit", "D", boxOf({45, 0}, {50, 3}), {{"category", "office"}, {"level_id", "hill"}});
  archive.add("opening", "east", lineOf({{45, 1}, {45, 2}}), {{"level_id", "hill"}});
  EXPECT_EQ(pieces(built(archive)), 2U);
  const auto addPoint = [&](const char* id, double x, const Json& level, const Json& neighbours) {
    archive.add("navPath", id, pointOf({x, 1.5}),
                {{"level_id", level}, {"neighbours", neighbours}});
  };
  addPoint("p", 5, "level0", Json::array({"q"}));
  addPoint("q", 8, nullptr, Json::array({"p", "r"}));
  addPoint("r", 38, nullptr, Json::array({"q", "s"}));
  addPoint("s", 40, "hill", Json::array({"r", "t"}));
  addPoint("t", 42, "hill", Json::array({"s"}));
  EXPECT_EQ(pieces(built(archive)), 1U);
  EXPECT_EQ(climbs(built(archive)).size(), 1U);
}

TEST(ImdfBuildings, NobodyGetsThroughEmergencyExits) {
  TestArchive archive;
  archive.floor(0,
                {"AAABBB",  //
                 "AAABBB",  //
                 "AAABBB"},
                {{'A', "office"}, {'B', "lobby"}});
  archive.opening("exit", 0, {3, 1}, {3, 2}, {{"category", "emergencyexit"}});
  EXPECT_TRUE(built(archive).edges.empty());
}

/// Halls on two levels with an escalator beside them, and an opening between the two on each.
TestArchive halls() {
  TestArchive archive;
  for (const int ordinal : {0, 1}) {
    archive.floor(ordinal,
                  {"HHHHUUU",  //
                   "HHHHUUU",  //
                   "HHHH   "},
                  {{'H', "walkway"}, {'U', "escalator"}});
    archive.opening("way" + std::to_string(ordinal), ordinal, {4, 1.5}, {4, 2.5});
  }
  return archive;
}

TEST(ImdfBuildings, LeadFromLevelToLevel) {
  const Building building = built(halls());
  EXPECT_EQ(climbs(building), (std::vector<Climb>{{0, 1, false, "escalator"}}));
  EXPECT_EQ(pieces(building), 1U);
}

TEST(ImdfBuildings, LeadOneWayOnly) {
  TestArchive archive = halls();
  archive.add("relationship", "down", nullptr,
              {{"category", "escalator"},
               {"direction", "directed"},
               {"origin", {{"id", "U1"}, {"feature_type", "unit"}}},
               {"destination", {{"id", "U0"}, {"feature_type", "unit"}}}});
  const Building building = built(archive);
  EXPECT_EQ(climbs(building), (std::vector<Climb>{{1, 0, true, "escalator"}}));
  EXPECT_EQ(pieces(building), 1U);
}

TEST(ImdfBuildings, LeadAlongRelationshipsBetweenOpenings) {
  for (const char* category : {"traversal", "stairs"}) {
    TestArchive archive;
    for (const int ordinal : {0, 1}) {
      archive.floor(ordinal,
                    {"AAABBB",  //
                     "AAABBB",  //
                     "AAABBB"},
                    {{'A', "walkway"}, {'B', "walkway"}});
      archive.opening("way" + std::to_string(ordinal), ordinal, {3, 1}, {3, 2});
    }
    archive.opening("top", 1, {6, 1}, {6, 2});
    archive.add("relationship", "down", nullptr,
                {{"category", category},
                 {"direction", "directed"},
                 {"origin", {{"id", "top"}, {"feature_type", "opening"}}},
                 {"destination", {{"id", "way0"}, {"feature_type", "opening"}}}});
    const Building building = built(archive);
    const std::string type = category == std::string("stairs") ? "stairs" : "ramp";
    EXPECT_EQ(climbs(building), (std::vector<Climb>{{1, 0, true, type}}));
    EXPECT_EQ(pieces(building), 1U);
  }
}

}  // namespace
}  // namespace KorvaniTest
