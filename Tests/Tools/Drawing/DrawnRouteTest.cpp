#include "Drawing/DrawnRoute.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Drawing/Scene.hpp"
#include "Navigation/Directions/Directions.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Routing/Step.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/RouteSearch.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;
using KorvaniTools::ConnectionSymbol;
using KorvaniTools::DrawnRoute;
using KorvaniTools::drawnRoute;
using KorvaniTools::LevelNames;
using KorvaniTools::RouteArrow;
using KorvaniTools::RouteLeg;
using KorvaniTools::SceneFrame;
using KorvaniTools::Spot;

/// Metres east and south of a corner, on a level.
std::shared_ptr<KRVNavPoint> point(double x, double y, std::int64_t level) {
  constexpr double kMetres = 111195.08;
  return std::make_shared<KRVNavPoint>(KorvaniTools::Coordinate{-y / kMetres, x / kMetres}, level);
}

SceneFrame frame() {
  KorvaniTools::Rectangle rectangle;
  rectangle.include(KorvaniTools::Coordinate{0, 0});
  return SceneFrame(rectangle, 0);
}

DrawnRoute drawnSteps(std::vector<Step> steps) {
  const Spot start{"Start", steps.front().start()->coordinate(), steps.front().start()->level()};
  const Spot end{"End", steps.back().end()->coordinate(), steps.back().end()->level()};
  return drawnRoute(Route(std::move(steps)), start, end, LevelNames(), frame());
}

TEST(DrawnRoute, IsOneLegForEachStayOnALevel) {
  const auto a = point(0, 0, 0);
  const auto b = point(10, 0, 0);
  const auto c = point(10, 0, 1);
  const auto d = point(10, 5, 1);
  const auto e = point(0, 5, 1);
  const DrawnRoute route =
      drawnSteps({Step(a, b, 10), Step(b, c, 3, true, 1, "lift"), Step(c, d, 5), Step(d, e, 10)});
  ASSERT_EQ(route.legs.size(), 2U);
  EXPECT_EQ(route.legs[0].level, 0);
  ASSERT_EQ(route.legs[1].line.size(), 3U);
  EXPECT_NEAR(route.legs[1].line.front().x, 10, 1e-3);
  EXPECT_NEAR(route.legs[1].line.back().x, 0, 1e-3);
  EXPECT_NEAR(route.legs[1].line.back().y, 5, 1e-3);
  ASSERT_EQ(route.changes.size(), 1U);
  EXPECT_EQ(route.changes[0].symbol, ConnectionSymbol::elevator);
  EXPECT_EQ(route.changes[0].toName, "to level 1");
  EXPECT_TRUE(route.changes[0].goesUp());
  EXPECT_EQ(route.distance, 28);
  EXPECT_TRUE(route.touches(0));
  EXPECT_TRUE(route.touches(1));
  EXPECT_FALSE(route.touches(2));
}

TEST(DrawnRoute, TakesARideOverSeveralLevelsForOneChange) {
  const auto a = point(0, 0, 2);
  const auto b = point(0, 0, 1);
  const auto c = point(4, 0, 0);
  const DrawnRoute route =
      drawnSteps({Step(a, b, 3, true, 1, "escalator"), Step(b, c, 5, true, 1, "escalator")});
  ASSERT_EQ(route.changes.size(), 1U);
  EXPECT_EQ(route.changes[0].from, 2);
  EXPECT_EQ(route.changes[0].to, 0);
  EXPECT_FALSE(route.changes[0].goesUp());
  EXPECT_NEAR(route.changes[0].arrives.x, 4, 1e-3);
  EXPECT_TRUE(route.legs.empty());
}

TEST(DrawnRoute, TellsConnectionsOfDifferentKindsApart) {
  const DrawnRoute route = drawnSteps({Step(point(0, 0, 0), point(0, 0, 1), 3, true, 1, "lift"),
                                       Step(point(0, 0, 1), point(0, 0, 2), 3, true, 1, "stairs"),
                                       Step(point(0, 0, 2), point(0, 0, 1), 3, true, 1, "stairs")});
  EXPECT_EQ(route.changes.size(), 3U);
}

/// Routes of the engine through the example building.
class DrawnTerminalRoute : public FacadeFixture {
 protected:
  void SetUp() override {
    useThreads();
    config().setCheckDestinationsAgainstOwnWalls(true);
    building_ = KorvaniTools::readBuilding(std::string(KORVANI_SOURCE_DIR) +
                                           "/Examples/Buildings/terminal.building.geojson");
    KorvaniTools::provideGraph(KorvaniTools::makeGraph(building_));
    const LevelNames levels(building_);
    const KorvaniTools::PlaceFinder finder(building_, levels);
    const Spot start = finder.find("Main entrance");
    const Spot end = finder.find("Gate B4");
    const auto answer = KorvaniTools::searchRoute(start, {end}, false);
    ASSERT_TRUE(answer.route);
    directions_ = answer.route->directions();
    scene_ = KorvaniTools::makeScene(building_);
    route_ = drawnRoute(*answer.route, start, end, levels, scene_.frame);
  }

  KorvaniTools::Building building_;
  KorvaniTools::Scene scene_;
  DrawnRoute route_;
  std::vector<KorvaniNavigation::Directions> directions_;
};

double apart(KorvaniTools::ScenePoint a, KorvaniTools::ScenePoint b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

TEST_F(DrawnTerminalRoute, RunsFromStartToDestinationThroughItsChanges) {
  ASSERT_EQ(route_.changes.size() + 1, route_.legs.size());
  EXPECT_LT(apart(route_.legs.front().line.front(), route_.start.at), 0.5);
  EXPECT_LT(apart(route_.legs.back().line.back(), route_.destination.at), 3);
  for (std::size_t i = 0; i < route_.changes.size(); ++i) {
    EXPECT_EQ(route_.changes[i].from, route_.legs[i].level);
    EXPECT_EQ(route_.changes[i].to, route_.legs[i + 1].level);
    EXPECT_LT(apart(route_.changes[i].leaves, route_.legs[i].line.back()), 1e-6);
    EXPECT_LT(apart(route_.changes[i].arrives, route_.legs[i + 1].line.front()), 1e-6);
  }
  EXPECT_FALSE(route_.instructions.empty());
}

TEST_F(DrawnTerminalRoute, HasAnArrowWhereverAnInstructionHasOne) {
  std::vector<RouteArrow> arrows = route_.arrows;
  std::size_t next = 0;
  for (const auto& directions : directions_) {
    if (!directions.arrow()) continue;
    ASSERT_LT(next, arrows.size());
    const RouteArrow& arrow = arrows[next++];
    EXPECT_LT(apart(arrow.at, scene_.frame.at(directions.arrow()->peak)), 1e-9);
    EXPECT_EQ(arrow.heading, directions.arrow()->heading);
    EXPECT_EQ(arrow.level, directions.arrow()->level);
    EXPECT_EQ(arrow.kind, nameOf(directions.type()));
    EXPECT_FALSE(arrow.text.empty());
  }
  EXPECT_EQ(next, arrows.size());
}

/// Distance of a point from a leg's line.
double distanceFrom(const RouteLeg& leg, KorvaniTools::ScenePoint point) {
  double least = 1e9;
  for (std::size_t i = 0; i + 1 < leg.line.size(); ++i) {
    for (double part = 0; part <= 1; part += 0.002) {
      const KorvaniTools::ScenePoint on{leg.line[i].x + (leg.line[i + 1].x - leg.line[i].x) * part,
                                        leg.line[i].y + (leg.line[i + 1].y - leg.line[i].y) * part};
      least = std::min(least, apart(on, point));
    }
  }
  return least;
}

TEST_F(DrawnTerminalRoute, HasItsArrowsOnTheWay) {
  for (const RouteArrow& arrow : route_.arrows) {
    double least = 1e9;
    for (const RouteLeg& leg : route_.legs) {
      if (leg.level == arrow.level) least = std::min(least, distanceFrom(leg, arrow.at));
    }
    EXPECT_LT(least, 1) << arrow.text;
  }
}

}  // namespace
}  // namespace KorvaniTest
