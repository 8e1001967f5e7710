#include "Support/TextBuilding.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace KorvaniTest {
namespace {

double metres(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  return KorvaniPlatform::greatCircleDistance(a, b);
}

TEST(TextBuilding, LettersAndDigitsAreNodesInReadingOrder) {
  const TextBuilding building(R"(
    A  b
     7
    )");
  EXPECT_EQ(building.point("A")->identifier(), 1);
  EXPECT_EQ(building.point("b")->identifier(), 2);
  EXPECT_EQ(building.point("7")->identifier(), 3);
  EXPECT_EQ(building.graph()->nodes().keys(), (std::vector<std::int64_t>{1, 2, 3}));
}

TEST(TextBuilding, CellsAreThatManyMetresWideAndHigh) {
  const TextBuilding building("A  B\n\nC", 2.0);
  const auto where = [&](const char* name) { return building.point(name)->coordinate(); };
  EXPECT_EQ(where("A"), kOrigin);
  EXPECT_NEAR(metres(where("A"), where("B")), 6, 1e-5);
  EXPECT_NEAR(metres(where("A"), where("C")), 4, 1e-5);
  EXPECT_GT(where("B").longitude, where("A").longitude);
  EXPECT_LT(where("C").latitude, where("A").latitude);
  EXPECT_EQ(building.coordinate(0, 3, 0), where("B"));
}

TEST(TextBuilding, LinesJoinBothWays) {
  const TextBuilding building(R"(
A--B-C
|    |
|    D
E)");
  for (const char* pair : {"AB", "BC", "AE", "CD"}) {
    const std::string first(1, pair[0]);
    const std::string second(1, pair[1]);
    ASSERT_NE(building.edge(first, second), nullptr) << pair;
    ASSERT_NE(building.edge(second, first), nullptr) << pair;
    EXPECT_EQ(building.edge(first, second)->distance(),
              building.point(first)->distanceFrom(*building.point(second)));
  }
  EXPECT_EQ(building.edge("A", "C"), nullptr);
  EXPECT_EQ(building.edge("A", "D"), nullptr);
  EXPECT_EQ(building.graph()->edges().size(), 5u);
}

TEST(TextBuilding, NeighbouringCellsAreNotJoinedByStandingThere) {
  EXPECT_EQ(TextBuilding("AB").edge("A", "B"), nullptr);
}

TEST(TextBuilding, WallsRunFromCentreToCentreAndShareCorners) {
  const TextBuilding building(R"(
###
#.A
#)");
  const auto& walls = building.region(0)->obstacles();
  ASSERT_EQ(walls.size(), 2u);
  EXPECT_EQ(walls[0]->coordinateAt(0), building.coordinate(0, 0, 0));
  EXPECT_EQ(walls[0]->coordinateAt(1), building.coordinate(0, 2, 0));
  EXPECT_EQ(walls[1]->coordinateAt(0), building.coordinate(0, 0, 0));
  EXPECT_EQ(walls[1]->coordinateAt(1), building.coordinate(0, 0, 2));
  EXPECT_FALSE(walls[0]->hasStrength());
}

TEST(TextBuilding, ALoneSignIsAWallAsWideAsItsCell) {
  const TextBuilding building("A # B");
  const auto& walls = building.region(0)->obstacles();
  ASSERT_EQ(walls.size(), 1u);
  EXPECT_EQ(walls[0]->coordinateAt(0), building.coordinate(0, 1.5, 0));
  EXPECT_EQ(walls[0]->coordinateAt(1), building.coordinate(0, 2.5, 0));
}

TEST(TextBuilding, LevelsLieOnTopOfEachOther) {
  TextBuilding building;
  building.addLevel(0, R"(
    A-B)");
  building.addLevel(2, R"(
      C)");
  EXPECT_EQ(building.point("B")->coordinate(), building.point("C")->coordinate());
  EXPECT_EQ(building.point("C")->level(), 2);
  EXPECT_EQ(building.point("C")->region(), building.region(2));
  EXPECT_EQ(building.graph()->regions(),
            (KRVNavGraph::Regions{building.region(0), building.region(2)}));
}

TEST(TextBuilding, ARegionCoversItsDrawing) {
  const TextBuilding building("A--B\n|\nC");
  const auto region = building.region(0);
  EXPECT_EQ(region->northEastCoordinate(), building.coordinate(0, 3.5, -0.5));
  EXPECT_EQ(region->southWestCoordinate(), building.coordinate(0, -0.5, 2.5));
}

TEST(TextBuilding, ConnectionsCarryTheirValuesAndReplaceDrawnLines) {
  TextBuilding building("A-B C");
  building.connect("A", "C",
                   {.distance = 6,
                    .multiplicator = 2,
                    .isBarrierFree = false,
                    .type = "stairs",
                    .oneWay = true});
  building.connect("A", "B", {.distance = 1});
  const auto edge = building.edge("A", "C");
  ASSERT_NE(edge, nullptr);
  EXPECT_EQ(edge->distance(), 6);
  EXPECT_EQ(edge->multiplicator(), 2);
  EXPECT_FALSE(edge->isBarrierFree());
  EXPECT_EQ(edge->type(), "stairs");
  EXPECT_EQ(building.edge("C", "A"), nullptr);
  EXPECT_EQ(building.edge("B", "A")->distance(), 1);
}

TEST(TextBuilding, PositionsAreNoNodes) {
  TextBuilding building("A-B");
  const auto position = building.position(0, 1, 0);
  EXPECT_EQ(position->identifier(), -1);
  EXPECT_EQ(position->region(), nullptr);
  EXPECT_EQ(building.names({building.point("B"), position, building.point("A")}), "B?A");
}

TEST(TextBuilding, DrawingsWithoutSenseAreRefused) {
  EXPECT_THROW(TextBuilding("A-"), std::invalid_argument);
  EXPECT_THROW(TextBuilding("-A"), std::invalid_argument);
  EXPECT_THROW(TextBuilding("A\n|\n"), std::invalid_argument);
  EXPECT_THROW(TextBuilding("A A"), std::invalid_argument);
  EXPECT_THROW(TextBuilding("A*B"), std::invalid_argument);
  TextBuilding building("A");
  EXPECT_THROW(building.addLevel(0, "B"), std::invalid_argument);
  EXPECT_THROW(building.addLevel(1, "A"), std::invalid_argument);
  EXPECT_THROW(building.point("Z"), std::invalid_argument);
  EXPECT_THROW(building.region(7), std::invalid_argument);
}

}  // namespace
}  // namespace KorvaniTest
