#include "Recorder/BuildingWriter.hpp"

#include <gtest/gtest.h>

#include <random>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Recorder/GraphFaults.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniRecorder {
namespace {

using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::KRVNavRegion;
using KorvaniTest::TextBuilding;
using GraphPtr = std::shared_ptr<KRVNavGraph>;

GraphPtr readBack(const KRVNavGraph& graph) {
  return makeGraph(
      KorvaniTools::parseBuilding(buildingText(graph).text, "written.building.geojson"));
}

void expectSameEdge(const KRVNavEdge& a, const KRVNavEdge& b) {
  const std::string who =
      std::to_string(a.start()->identifier()) + " to " + std::to_string(a.end()->identifier());
  EXPECT_EQ(a.start()->identifier(), b.start()->identifier()) << who;
  EXPECT_EQ(a.end()->identifier(), b.end()->identifier()) << who;
  EXPECT_EQ(a.distance(), b.distance()) << who;
  EXPECT_EQ(a.multiplicator(), b.multiplicator()) << who;
  EXPECT_EQ(a.isBarrierFree(), b.isBarrierFree()) << who;
  EXPECT_EQ(a.type(), b.type()) << who;
}

void expectSameNode(const KRVNavPoint& a, const KRVNavPoint& b) {
  EXPECT_EQ(a.identifier(), b.identifier());
  EXPECT_EQ(a.identifierNumber(), b.identifierNumber());
  EXPECT_EQ(a.coordinate(), b.coordinate()) << a.identifier();
  EXPECT_EQ(a.level(), b.level()) << a.identifier();
  const auto edges = a.neighbourEdges();
  const auto others = b.neighbourEdges();
  ASSERT_EQ(edges.size(), others.size()) << a.identifier();
  for (std::size_t i = 0; i < edges.size(); ++i) expectSameEdge(*edges[i], *others[i]);
}

void expectSameRegion(const KRVNavRegion& a, const KRVNavRegion& b) {
  EXPECT_EQ(a.level(), b.level());
  EXPECT_EQ(a.southWestCoordinate(), b.southWestCoordinate());
  EXPECT_EQ(a.northEastCoordinate(), b.northEastCoordinate());
  EXPECT_EQ(a.nodes().keys(), b.nodes().keys());
  ASSERT_EQ(a.obstacles().size(), b.obstacles().size());
  for (std::size_t i = 0; i < a.obstacles().size(); ++i) {
    EXPECT_EQ(a.obstacles()[i]->coordinates(), b.obstacles()[i]->coordinates());
    EXPECT_EQ(a.obstacles()[i]->strength(), b.obstacles()[i]->strength());
    EXPECT_EQ(a.obstacles()[i]->hasStrength(), b.obstacles()[i]->hasStrength());
  }
}

void expectSame(const KRVNavGraph& a, const KRVNavGraph& b) {
  ASSERT_EQ(a.regions().size(), b.regions().size());
  for (std::size_t i = 0; i < a.regions().size(); ++i) {
    expectSameRegion(*a.regions()[i], *b.regions()[i]);
  }
  ASSERT_EQ(a.nodes().keys(), b.nodes().keys());
  for (const auto& [number, node] : a.nodes()) expectSameNode(*node, *b.nodeWithIdentifier(number));
  EXPECT_EQ(a.edges().keys(), b.edges().keys());
}

class BuildingWriter : public KorvaniTest::FacadeFixture {};

TEST_F(BuildingWriter, WritesAGraphThatReadsBackAsTheSame) {
  TextBuilding building(2.0);
  building.addLevel(0, R"(
  #########
  #A--B   #
  #   |   #
  #   C---D
  #########)");
  building.addLevel(-1, R"(
          E--F)");
  building.connect(
      "D", "E",
      {.distance = 6.1, .multiplicator = 2.5, .isBarrierFree = false, .type = "stairs \"north\""});
  building.connect("F", "E", {.distance = 1e-9, .oneWay = true});
  ASSERT_TRUE(graphFaults(*building.graph()).empty());
  expectSame(*building.graph(), *readBack(*building.graph()));
}

TEST_F(BuildingWriter, KeepsEveryOrderOfRegionsNodesAndNeighbours) {
  std::mt19937 chance(7);
  auto graph = std::make_shared<KRVNavGraph>();
  for (const std::int64_t level : {3, -2, 3, 0}) {
    auto region = std::make_shared<KRVNavRegion>(level);
    region->setSouthWestCoordinate({48.0, 11.0});
    region->setNorthEastCoordinate({48.1, 11.1});
    graph->add(region);
  }
  std::vector<std::shared_ptr<KRVNavPoint>> points;
  std::uniform_real_distribution<double> offset(0, 0.1);
  for (int i = 0; i < 60; ++i) {
    const auto& region = graph->regions()[chance() % 4];
    const std::int64_t number = (i * 37) % 61;
    points.push_back(
        KorvaniTest::at({48 + offset(chance), 11 + offset(chance)}, region->level(), number));
    region->addNode(points.back());
  }
  for (int i = 0; i < 400; ++i) {
    const auto& from = points[chance() % points.size()];
    const auto& to = points[chance() % points.size()];
    graph->addEdge(std::make_shared<KRVNavEdge>(from, to, 0.5 + offset(chance), 1 + offset(chance),
                                                chance() % 2 == 0),
                   *from, *to);
  }
  ASSERT_TRUE(graphFaults(*graph).empty());
  expectSame(*graph, *readBack(*graph));
}

TEST_F(BuildingWriter, WritesObstaclesOfEachRegionWithTheirStrengthInOrder) {
  const TextBuilding building("A-B");
  const auto& region = building.region(0);
  region->addObstacle(std::make_shared<KRVNavObstacle>(
      std::vector<KorvaniNavigation::CLLocationCoordinate2D>{{48, 11}, {48.5, 11.5}}, 40));
  region->addObstacle(std::make_shared<KRVNavObstacle>(
      std::vector<KorvaniNavigation::CLLocationCoordinate2D>{{0.1, -0.0}}));
  // A shared one is written for each of its regions.
  const auto other = std::make_shared<KRVNavRegion>(1);
  building.graph()->add(other);
  other->addObstacle(region->obstacles().front());
  expectSame(*building.graph(), *readBack(*building.graph()));
}

TEST_F(BuildingWriter, WritesTheDistanceOfAnEdgeWhateverTheLevelHeight) {
  const TextBuilding building("A--B");
  const std::string text = buildingText(*building.graph()).text;
  config().setLevelHeight(100);
  EXPECT_EQ(buildingText(*building.graph()).text, text);
  expectSame(*building.graph(), *readBack(*building.graph()));
}

TEST_F(BuildingWriter, LeavesOutADistanceOfNothing) {
  config().setLevelHeight(0);
  TextBuilding building("A--B");
  auto lift = KorvaniTest::at(building.point("B")->coordinate(), 0, 9);
  building.region(0)->addNode(lift);
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(building.point("B"), lift),
                            *building.point("B"), *lift);
  ASSERT_TRUE(graphFaults(*building.graph()).empty());
  EXPECT_EQ(buildingText(*building.graph()).edgesWithoutDistance, 1U);
  expectSame(*building.graph(), *readBack(*building.graph()));
}

TEST_F(BuildingWriter, WritesAnEmptyGraphAsABuildingWithoutFeatures) {
  expectSame(KRVNavGraph(), *readBack(KRVNavGraph()));
}

TEST_F(BuildingWriter, WritesAFeatureALine) {
  const std::string text = buildingText(*TextBuilding("A-B").graph()).text;
  EXPECT_EQ(text.substr(0, text.find('\n')),
            R"({"type":"FeatureCollection","formatVersion":1,"features":[)");
  EXPECT_NE(text.find("\n{\"type\":\"Feature\",\"properties\":{\"kind\":\"node\",\"id\":2,"
                      "\"level\":0,\"region\":\"region 1\"},"),
            std::string::npos)
      << text;
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 7) << text;
}

TEST_F(BuildingWriter, ReadsBackTheDemoBuilding) {
  const auto graph = makeGraph(KorvaniTools::readBuilding(
      KORVANI_SOURCE_DIR "/Examples/Buildings/terminal.building.geojson"));
  ASSERT_TRUE(graphFaults(*graph).empty());
  expectSame(*graph, *readBack(*graph));
}

}  // namespace
}  // namespace KorvaniRecorder
