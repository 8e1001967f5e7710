#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Simulation/Detour.hpp"
#include "Simulation/GroundOffset.hpp"
#include "Simulation/Walk.hpp"
#include "Simulation/WalkSimulator.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/InputError.hpp"
#include "Support/RouteSearch.hpp"
#include "Tools/BuildingText.hpp"
#include "Tools/WalkReplay.hpp"

namespace KorvaniTest {
namespace {

using KorvaniPlatform::greatCircleDistance;
using KorvaniTools::Building;
using KorvaniTools::Coordinate;
using KorvaniTools::InputError;
using KorvaniTools::NoWalkError;
using KorvaniTools::PositionOperation;
using KorvaniTools::RouteOperation;
using KorvaniTools::SnapOperation;
using KorvaniTools::Spot;
using KorvaniTools::TraceOperation;
using KorvaniTools::TracePoint;
using KorvaniTools::WalkOptions;
using testing::HasSubstr;

/// A corridor of 222 m to the north with a side corridor of 74 m half-way, which leads on to the
/// corridor's end; from there a lift to a corridor on level 1. A hut stands alone.
Building hall() {
  return parsed(
      {nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001), nodeAt(3, 0, 11, 48.002),
       nodeAt(4, 1, 11, 48.002), nodeAt(5, 1, 11, 48.0025), nodeAt(6, 0, 11.001, 48.001),
       nodeAt(7, 0, 11.01, 48.001), nodeAt(8, 0, 11.01, 48.0011), edgeOf(1, 2), edgeOf(2, 3),
       edgeOf(3, 4, R"("type":"lift","distance":12,"multiplicator":2,"barrierFree":false)"),
       edgeOf(4, 5), edgeOf(2, 6), edgeOf(6, 3), edgeOf(7, 8), placeAt("Door", 0, 11, 48),
       placeAt("End", 0, 11, 48.002), placeAt("Desk", 1, 11, 48.0025),
       placeAt("Hut", 0, 11.01, 48.0011)},
      R"("attribution":"Ann and Bo")");
}

class Simulate : public FacadeFixture {
 protected:
  void SetUp() override {
    useThreads();
    KorvaniTools::provideGraph(KorvaniTools::makeGraph(building_));
  }

  std::vector<TraceOperation> walk(const std::string& from, const std::string& to,
                                   WalkOptions options = {}) const {
    const KorvaniTools::PlaceFinder finder(building_, KorvaniTools::LevelNames(building_));
    options.from = finder.find(from);
    options.to = finder.find(to);
    return KorvaniTools::simulateWalk(building_, options);
  }

  /// The positions of a walk, in their order.
  std::vector<TracePoint> positions(const std::string& from, const std::string& to,
                                    const WalkOptions& options = {}) const {
    std::vector<TracePoint> points;
    for (const TraceOperation& operation : walk(from, to, options)) {
      if (const auto* position = std::get_if<PositionOperation>(&operation)) {
        points.push_back(position->at);
      }
    }
    return points;
  }

  std::string refusal(const WalkOptions& options) const {
    try {
      walk("Door", "End", options);
    } catch (const InputError& error) {
      return error.what();
    }
    return "";
  }

  const Building building_ = hall();
};

Coordinate placeOf(const TracePoint& point) { return {point.latitude, point.longitude}; }

double metresBetween(const TracePoint& a, const TracePoint& b) {
  return greatCircleDistance(placeOf(a), placeOf(b));
}

bool same(const TracePoint& a, const TracePoint& b) {
  return placeOf(a) == placeOf(b) && a.level == b.level;
}

TEST_F(Simulate, IsARouteAndThenPairsOfSnapAndPosition) {
  const auto operations = walk("Door", "End");
  ASSERT_TRUE(std::holds_alternative<RouteOperation>(operations.front()));
  const auto& route = std::get<RouteOperation>(operations.front());
  EXPECT_TRUE(same(route.from, {48, 11, 0}));
  ASSERT_EQ(route.to.size(), 1U);
  EXPECT_TRUE(same(route.to.front(), {48.002, 11, 0}));
  EXPECT_FALSE(route.barrierFree);
  ASSERT_EQ(operations.size() % 2, 1U);
  for (std::size_t i = 1; i < operations.size(); i += 2) {
    ASSERT_TRUE(std::holds_alternative<SnapOperation>(operations[i]));
    ASSERT_TRUE(std::holds_alternative<PositionOperation>(operations[i + 1]));
    EXPECT_TRUE(same(std::get<SnapOperation>(operations[i]).at,
                     std::get<PositionOperation>(operations[i + 1]).at));
  }
}

TEST_F(Simulate, PositionsLieOnTheRouteAndASecondOfWalkApart) {
  WalkOptions options;
  options.speed = 2;
  const auto points = positions("Door", "End", options);
  // Of 222 m the last four are not walked: there one is within the proximity already.
  EXPECT_NEAR(static_cast<double>(points.size()), 110, 1);
  TracePoint before{48, 11, 0};
  for (const TracePoint& point : points) {
    EXPECT_EQ(point.longitude, 11);
    EXPECT_EQ(point.level, 0);
    EXPECT_NEAR(metresBetween(before, point), 2, 1e-3);
    before = point;
  }
}

TEST_F(Simulate, WalksAtTheSpeedThatRoutesAreTimedWith) {
  const auto points = positions("Door", "End");
  EXPECT_NEAR(metresBetween(points[9], points[19]), 15, 1e-3);
}

TEST_F(Simulate, ALiftTakesItsTimeAndChangesTheLevelHalfWay) {
  const auto points = positions("Door", "Desk");
  // 12 m with the multiplicator 2 at 1.5 m/s.
  std::vector<std::int64_t> levels;
  for (const TracePoint& point : points) {
    if (metresBetween(point, {48.002, 11, 0}) < 1e-3) levels.push_back(point.level);
  }
  EXPECT_NEAR(static_cast<double>(levels.size()), 16, 1);
  EXPECT_NEAR(static_cast<double>(std::count(levels.begin(), levels.end(), 0)), 8, 1);
  EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end()));
  EXPECT_EQ(points.back().level, 1);
}

TEST_F(Simulate, TheSameSeedGivesTheSameWalk) {
  WalkOptions options;
  options.noise = 3;
  options.levelGlitches = 0.1;
  options.detour = true;
  const auto first = positions("Door", "Desk", options);
  const auto second = positions("Door", "Desk", options);
  ASSERT_EQ(first.size(), second.size());
  EXPECT_TRUE(std::equal(first.begin(), first.end(), second.begin(), same));
}

TEST_F(Simulate, OneThreadGivesTheSameWalkAsMany) {
  WalkOptions options;
  options.noise = 3;
  const auto onThreads = positions("Door", "Desk", options);
  KorvaniPlatform::setGlobalExecutor(std::make_shared<KorvaniPlatform::MainQueueExecutor>());
  const auto onOne = positions("Door", "Desk", options);
  ASSERT_EQ(onThreads.size(), onOne.size());
  EXPECT_TRUE(std::equal(onThreads.begin(), onThreads.end(), onOne.begin(), same));
}

TEST_F(Simulate, OtherSeedsGiveOtherNoise) {
  WalkOptions options;
  options.noise = 3;
  std::set<double> latitudes;
  for (options.seed = 0; options.seed < 10; ++options.seed) {
    latitudes.insert(positions("Door", "End", options).front().latitude);
  }
  EXPECT_EQ(latitudes.size(), 10U);
}

TEST_F(Simulate, NoiseIsWhatLiesBetweenTheWalkAndItsPositions) {
  WalkOptions options;
  const auto exact = positions("Door", "End", options);
  options.noise = 2;
  const auto noisy = positions("Door", "End", options);
  double squares = 0;
  const std::size_t count = std::min(exact.size(), noisy.size()) - 10;
  for (std::size_t i = 0; i < count; ++i) {
    squares += std::pow(metresBetween(exact[i], noisy[i]), 2);
  }
  // Both directions together, of which not many are independent: 120 readings in 5 s each.
  EXPECT_NEAR(std::sqrt(squares / static_cast<double>(count)), 2 * std::sqrt(2.0), 0.9);
}

TEST_F(Simulate, GlitchesComeWithTheirProbability) {
  WalkOptions options;
  options.levelGlitches = 0.2;
  options.speed = 0.2;
  const auto points = positions("Door", "End", options);
  const auto wrong = static_cast<double>(std::count_if(
      points.begin(), points.end(), [](const TracePoint& point) { return point.level == 1; }));
  const auto count = static_cast<double>(points.size());
  ASSERT_GT(count, 1000);
  EXPECT_NEAR(wrong / count, 0.2, 0.05);
}

TEST_F(Simulate, StopsWhereTheEngineSaysThatOneHasArrived) {
  const auto points = positions("Door", "End");
  EXPECT_LT(metresBetween(points.back(), {48.002, 11, 0}), 4);
}

TEST_F(Simulate, OneWhoIsThereAlreadyIsNotSeenToMove) {
  EXPECT_EQ(walk("End", "48.00201,11,0").size(), 1U);
}

TEST_F(Simulate, ADetourLeavesTheRouteAndArrives) {
  WalkOptions options;
  options.detour = true;
  const auto points = positions("Door", "End", options);
  const auto farthest = std::max_element(
      points.begin(), points.end(),
      [](const TracePoint& a, const TracePoint& b) { return a.longitude < b.longitude; });
  EXPECT_GT(metresBetween(*farthest, {farthest->latitude, 11, 0}), KorvaniTools::kOffRoute);
  EXPECT_LT(metresBetween(points.back(), {48.002, 11, 0}), 4);
}

TEST_F(Simulate, ADetourThatIsNotThereIsSaidSo) {
  WalkOptions options;
  options.detour = true;
  EXPECT_THROW(walk("48.0012,11,0", "End", options), NoWalkError);
}

TEST_F(Simulate, WithoutAWayThereIsNoWalk) {
  EXPECT_THROW(walk("Door", "Hut"), NoWalkError);
  WalkOptions options;
  options.barrierFree = true;
  EXPECT_THROW(walk("Door", "Desk", options), NoWalkError);
}

TEST_F(Simulate, BarrierFreeWalksSayItInTheRoute) {
  WalkOptions options;
  options.barrierFree = true;
  EXPECT_EQ(std::get<RouteOperation>(walk("Door", "End", options).front()).barrierFree, true);
}

TEST_F(Simulate, OptionsOutOfRangeAreRefused) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  for (const double wrong : {-0.1, -kInfinity, kInfinity, kNan, 1001.0}) {
    WalkOptions options;
    options.noise = wrong;
    EXPECT_THAT(refusal(options), HasSubstr("--noise: found")) << wrong;
  }
  for (const double wrong : {0.0, -1.5, kInfinity, kNan}) {
    WalkOptions options;
    options.speed = wrong;
    EXPECT_THAT(refusal(options), HasSubstr("--speed: found")) << wrong;
  }
  for (const double wrong : {-0.01, 1.01, kInfinity, kNan}) {
    WalkOptions options;
    options.levelGlitches = wrong;
    EXPECT_THAT(refusal(options), HasSubstr("--level-glitches: found")) << wrong;
  }
}

TEST_F(Simulate, AWalkWithoutEndIsRefused) {
  WalkOptions options;
  for (const double speed : {0.001, 1e-300}) {
    options.speed = speed;
    EXPECT_THAT(refusal(options), HasSubstr("--speed: at"));
  }
}

TEST_F(Simulate, TheHeadOfATraceSaysHowItWasMade) {
  WalkOptions options;
  options.noise = 2.5;
  options.seed = 7;
  options.detour = true;
  const std::string trace = simulated(building_, "Door", "End", options, {"levelHeight=4"});
  EXPECT_THAT(trace, testing::StartsWith("# A simulated walk"));
  for (const char* words :
       {"Door (level 0)", "End (level 0)", "--noise 2.5 --speed 1.5 --seed 7", "--detour",
        "--config levelHeight=4", "correlation time 5 s", "map data  Ann and Bo"}) {
    EXPECT_THAT(trace, HasSubstr(words));
  }
}

TEST_F(Simulate, ATraceSetsWhatTheSimulationHadSet) {
  const std::string trace =
      simulated(building_, "Door", "End", {},
                {"navigationTargetProximityDistance=6", "levelHeight=4", "levelHeight=2"});
  EXPECT_THAT(trace, HasSubstr(R"({"op":"config","set":{"navigationTargetProximityDistance":6.0},)"
                               R"("fields":{"checkDestinationsAgainstOwnWalls":true,)"
                               R"("levelHeight":2.0}})"));
  EXPECT_THAT(simulated(building_, "Door", "End", {}, {"checkDestinationsAgainstOwnWalls=false"}),
              HasSubstr(R"({"checkDestinationsAgainstOwnWalls":false})"));
}

TEST_F(Simulate, AnyNameFitsIntoAComment) {
  const Building odd =
      parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001), edgeOf(1, 2),
              placeAt(R"(A\n{}\r\u0001)", 0, 11, 48), placeAt("B", 0, 11, 48.001)});
  EXPECT_TRUE(arrives(simulated(odd, "A\n{}\r\x01", "B"), odd));
}

TEST_F(Simulate, SettingsOfAllKindsAreReplayed) {
  EXPECT_TRUE(arrives(
      simulated(building_, "Door", "Desk", {},
                {"levelHeight=0", "navigationActivateMagneticSnapping=true",
                 "navigationMagneticPathSnappingDistanceThreshold=2.7",
                 "navigationMagneticPathSnappingFallbackThreshold=3",
                 "navigationActivateRouteOptimisation=1", "navigationTargetProximityDistance=2"}),
      building_));
}

TEST_F(Simulate, OneWhoIsThereAlreadyArrivesInAReplay) {
  EXPECT_TRUE(arrives(simulated(building_, "End", "48.00201,11,0"), building_));
}

TEST_F(Simulate, EveryWalkArrivesInAReplay) {
  WalkOptions options;
  for (const double noise : {0.0, 5.0, 12.0}) {
    for (const double glitches : {0.0, 0.05, 1.0}) {
      for (const bool detour : {false, true}) {
        options.noise = noise;
        options.levelGlitches = glitches;
        options.detour = detour;
        ++options.seed;
        EXPECT_TRUE(arrives(simulated(building_, "Door", "Desk", options), building_))
            << "seed " << options.seed;
      }
    }
  }
}

KorvaniTools::Whereabouts endOf(const std::vector<KorvaniNavigation::Step>& steps) {
  KorvaniTools::Walk walk({{48, 11}, 0}, 1);
  walk.follow(Route(steps));
  return walk.end();
}

PointPtr pointNorthOf(const PointPtr& from, double metres, std::int64_t level,
                      std::int64_t identifier) {
  return std::make_shared<KorvaniNavigation::KRVNavPoint>(
      KorvaniTools::movedBy(from->coordinate(), {0, metres}), level, identifier);
}

TEST(Walk, EndsAtTheNodeThatTheDestinationLiesBeside) {
  const auto node =
      std::make_shared<KorvaniNavigation::KRVNavPoint>(Coordinate{48.0012345678912, 11}, 0, 7);
  EXPECT_EQ(endOf({{node, pointNorthOf(node, 0.9, 0, -1), 3.1}}).coordinate, node->coordinate());
}

TEST(Walk, EndsWhereTheRouteDoesWhenThatIsNoNode) {
  const auto node =
      std::make_shared<KorvaniNavigation::KRVNavPoint>(Coordinate{48.0012345678912, 11}, 0, 7);
  for (const auto& end : {pointNorthOf(node, 1.1, 0, -1), pointNorthOf(node, 0, 1, 8)}) {
    const auto place = endOf({{node, end, 3.2}});
    EXPECT_EQ(place.coordinate, end->coordinate());
    EXPECT_EQ(place.level, end->level());
  }
}

TEST(Walk, WithoutStepsStandsStill) {
  const KorvaniTools::Walk walk({{48, 11}, 2}, 1);
  EXPECT_EQ(walk.seconds(), 0);
  EXPECT_EQ(walk.at(5).coordinate, (Coordinate{48, 11}));
  EXPECT_EQ(walk.at(5).level, 2);
}

TEST(Walk, KnowsTheLastNodeOfARoute) {
  const auto node = std::make_shared<KorvaniNavigation::KRVNavPoint>(Coordinate{48.001, 11}, 0, 7);
  const auto foot = pointNorthOf(node, 5, 0, -1);
  const auto further = pointNorthOf(node, 9, 0, -1);
  EXPECT_FALSE(KorvaniTools::lastNodeOf(Route({{foot, further, 5}})));
  const auto last = KorvaniTools::lastNodeOf(Route({{node, foot, 6}, {foot, further, 5}}));
  ASSERT_TRUE(last);
  EXPECT_EQ(last->coordinate, node->coordinate());
}

class DemoWalks : public FacadeFixture,
                  public testing::WithParamInterface<std::pair<const char*, const char*>> {
 protected:
  void SetUp() override { useThreads(); }

  const Building building_ = KorvaniTools::readBuilding(
      KORVANI_SOURCE_DIR "/Examples/Buildings/terminal.building.geojson");
};

TEST_P(DemoWalks, ArriveInAReplay) {
  const auto [from, to] = GetParam();
  for (const auto& options : walksOfAllKinds()) {
    EXPECT_TRUE(arrives(simulated(building_, from, to, options), building_))
        << "seed " << options.seed;
  }
}

INSTANTIATE_TEST_SUITE_P(AcrossTheTerminal, DemoWalks,
                         testing::Values(std::pair("Main entrance", "Gate B4"),
                                         std::pair("Main entrance", "Viewing gallery"),
                                         std::pair("Taxi rank", "Harbour tours jetty")));

}  // namespace
}  // namespace KorvaniTest
