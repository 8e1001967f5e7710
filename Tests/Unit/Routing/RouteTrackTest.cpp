#include "Navigation/Routing/RouteTrack.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "Navigation/Graph/GraphAccess.hpp"
#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Navigation/Routing/RouteNotes.hpp"
#include "Navigation/Routing/RouteProgress.hpp"
#include "Platform/Clock.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/PlacedBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::asEdge;
using KorvaniNavigation::IntersectionKind;
using KorvaniNavigation::RouteNotes;
using KorvaniNavigation::RouteTrack;
using KorvaniNavigation::Step;

class RouteTrackTest : public FacadeFixture {
 protected:
  RouteTrackTest() { provide(building.graph()); }

  static RouteTrack over(const std::vector<PointPtr>& points) {
    return RouteTrack(routeOver(points).remainingSteps());
  }

  static Route routeOver(const std::vector<PointPtr>& points) {
    std::vector<Step> steps;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
      steps.emplace_back(points[i], points[i + 1], points[i]->distanceFrom(*points[i + 1]));
    }
    return Route(std::move(steps));
  }

  /// The corridor: three points eastwards, then one to the north.
  std::vector<PointPtr> corridor() {
    return {building.node(0, 0), building.node(0, 10), building.node(0, 20), building.node(10, 20)};
  }

  PlacedBuilding building;
};

TEST_F(RouteTrackTest, PutsAPositionOntoTheStepBesideIt) {
  const RouteTrack track = over(corridor());
  const auto position = building.position(1, 14);
  ASSERT_TRUE(track.canPlace(*position));
  const auto place = track.place(*position, bundle());
  ASSERT_TRUE(place);
  EXPECT_EQ(place->kind, IntersectionKind::edge);
  EXPECT_EQ(place->number, 1U);
  EXPECT_NEAR(place->distance, 1.0, 1e-3);
  EXPECT_EQ(place->node->identifier(), -1);
}

TEST_F(RouteTrackTest, PutsAPositionBeyondTheEndOntoTheLastPoint) {
  const RouteTrack track = over(corridor());
  const auto place = track.place(*building.position(14, 20), bundle());
  ASSERT_TRUE(place);
  EXPECT_EQ(place->kind, IntersectionKind::node);
  EXPECT_EQ(place->node->identifier(), 4);
}

TEST_F(RouteTrackTest, TakesTheNearestLevelForAPositionOnNone) {
  const RouteTrack track =
      over({building.node(0, 0, 1), building.node(0, 10, 1), building.node(0, 10, 5)});
  EXPECT_EQ(track.place(*building.position(0, 10, 9), bundle())->node->level(), 5);
  EXPECT_EQ(track.place(*building.position(0, 10, 3), bundle())->node->level(), 1);
}

TEST_F(RouteTrackTest, HasNoPlaceForAPositionThatSeesNothing) {
  building.wall(12, -50, 12, 50);
  const RouteTrack track = over(corridor());
  EXPECT_FALSE(track.place(*building.position(30, -30), bundle()));
}

TEST_F(RouteTrackTest, LooksFartherWhereAWallHidesTheNearestPoint) {
  building.wall(2, -3, 2, 13);
  const RouteTrack track = over(corridor());
  const auto place = track.place(*building.position(4, 10), bundle());
  ASSERT_TRUE(place);
  EXPECT_EQ(place->number, 2U);
  EXPECT_NEAR(place->node->coordinate().longitude, building.place(0, 20).longitude, 1e-7);
}

TEST_F(RouteTrackTest, LeavesThePointsBehindThePersonOut) {
  Route route = routeOver(corridor());
  ASSERT_TRUE(trimRoute(route, building.position(0, 12)));
  const RouteTrack track(route.remainingSteps());
  const auto place = track.place(*building.position(0, 1), bundle());
  ASSERT_TRUE(place);
  EXPECT_EQ(place->number, 0U);
  EXPECT_EQ(place->node->coordinate(), building.place(0, 12));
}

TEST_F(RouteTrackTest, GivesTheNodesOfItsGraphWhenAskedForTheIntersection) {
  const RouteTrack track = over(corridor());
  const auto place = track.place(*building.position(1, 14), bundle());
  const auto intersection = asEdge(track.intersectionAt(*place));
  ASSERT_TRUE(intersection);
  EXPECT_EQ(intersection->enclosingNodeOne(), track.graph()->nodeWithIdentifier(2));
  EXPECT_EQ(intersection->enclosingNodeTwo(), track.graph()->nodeWithIdentifier(3));
  EXPECT_EQ(intersection->node(), place->node);
}

TEST_F(RouteTrackTest, GivesTheNodesThatItsGraphHadEvenWhenTheHostHasTakenThemOut) {
  const RouteTrack track = over(corridor());
  const auto place = track.place(*building.position(1, 14), bundle());
  const auto graph = track.graph();
  const auto start = graph->nodeWithIdentifier(2);
  graph->nodes().clear();
  EXPECT_EQ(asEdge(track.intersectionAt(*place))->enclosingNodeOne(), start);
}

TEST_F(RouteTrackTest, CannotPlaceOnceSomebodyHasItsGraph) {
  const RouteTrack track = over(corridor());
  const auto position = building.position(1, 14);
  EXPECT_TRUE(track.canPlace(*position));
  static_cast<void>(track.graph());
  EXPECT_FALSE(track.canPlace(*position));
}

TEST_F(RouteTrackTest, CannotPlaceOnceSomebodyHasAPlaceOfItsGraph) {
  const RouteTrack track = over(corridor());
  const auto position = building.position(1, 14);
  const auto place = track.place(*position, bundle());
  static_cast<void>(track.intersectionAt(*place));
  EXPECT_FALSE(track.canPlace(*position));
}

TEST_F(RouteTrackTest, CannotPlaceWhereARouteMeetsAPointTwice) {
  const auto points = corridor();
  const RouteTrack track = over({points[0], points[1], points[2], points[1], points[3]});
  EXPECT_FALSE(track.canPlace(*building.position(0, 5)));
}

TEST_F(RouteTrackTest, CannotPlaceWhereAStepIsMissing) {
  const auto points = corridor();
  const Route route({Step(points[0], points[1], 10), Step(points[2], points[3], 10)});
  EXPECT_FALSE(RouteTrack(route.remainingSteps()).canPlace(*building.position(0, 5)));
}

TEST_F(RouteTrackTest, CannotPlaceWhatIsNotOnEarth) {
  const RouteTrack track = over(corridor());
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(track.canPlace(*at({nan, 11}, 0)));
  EXPECT_TRUE(track.canPlace(*building.position(0, 5)));
}

TEST_F(RouteTrackTest, CannotPlaceWhereThePersonIsNotOnEarth) {
  const auto all = routeOver(corridor()).remainingSteps();
  const auto person = at({std::numeric_limits<double>::quiet_NaN(), 11}, 0);
  const auto left = all->after(1, Step(person, all->view()[1].end(), 5));
  EXPECT_FALSE(RouteTrack(left).canPlace(*building.position(0, 15)));
}

TEST_F(RouteTrackTest, CannotPlaceWhereThePersonStandsAtAPointThatComesLater) {
  const auto points = corridor();
  Route route = routeOver(points);
  ASSERT_TRUE(trimRoute(route, at(building.place(0, 4), 0, points[2]->identifier())));
  EXPECT_FALSE(RouteTrack(route.remainingSteps()).canPlace(*building.position(0, 5)));
}

TEST_F(RouteTrackTest, IsOfThePointsAsTheyAreWhenItIsMade) {
  const auto points = corridor();
  const Route route = routeOver(points);
  const RouteTrack before(route.remainingSteps());
  points[3]->setCoordinate(building.place(-10, 20));
  const RouteTrack after(route.remainingSteps());
  const auto position = building.position(12, 20);
  EXPECT_EQ(before.place(*position, bundle())->node->coordinate(), building.place(10, 20));
  EXPECT_NE(after.place(*position, bundle())->node->coordinate(), building.place(10, 20));
}

TEST_F(RouteTrackTest, NotesARouteAnewWhenTheStartOrTheEndOfAnyStepHasMoved) {
  const auto points = corridor();
  const Route route({Step(points[0], points[1], 10), Step(points[2], points[3], 10)});
  const auto steps = route.remainingSteps();
  for (const auto& point : points) {
    const auto before = RouteNotes::of(*steps->computed());
    EXPECT_EQ(RouteNotes::of(*steps->computed()), before);
    point->setLevel(point->level() + 1);
    EXPECT_NE(RouteNotes::of(*steps->computed()), before);
  }
}

TEST_F(RouteTrackTest, LeavesTheHostsOwnPositionsUnwatchedAndSeesThemMoveAllTheSame) {
  const auto person = building.position(0, 0);
  const Route straight = routeOver({person, building.node(0, 30)});
  const RouteTrack before(straight.remainingSteps());
  const auto stamp = KorvaniNavigation::GraphAccess::pointsStamp();
  person->setCoordinate(building.place(0, 10));
  EXPECT_EQ(KorvaniNavigation::GraphAccess::pointsStamp(), stamp);
  const RouteTrack after(straight.remainingSteps());
  const auto behind = building.position(0, -1);
  EXPECT_EQ(before.place(*behind, bundle())->node->coordinate(), building.place(0, 0));
  EXPECT_EQ(after.place(*behind, bundle())->node->coordinate(), building.place(0, 10));
}

TEST_F(RouteTrackTest, NotesTheHostsOwnPositionsAnewWhenAnythingOfThemIsAnother) {
  const auto person = building.position(0, 0);
  const auto steps = routeOver({person, building.node(0, 30)}).remainingSteps();
  const auto isNotedAnew = [&](const auto& change) {
    const auto before = RouteNotes::of(*steps->computed());
    EXPECT_EQ(RouteNotes::of(*steps->computed()), before);
    change();
    return RouteNotes::of(*steps->computed()) != before;
  };
  const auto elsewhere = building.place(1, 0);
  EXPECT_TRUE(isNotedAnew([&] { person->setCoordinate(elsewhere); }));
  EXPECT_TRUE(isNotedAnew([&] { person->setLevel(1); }));
  EXPECT_TRUE(isNotedAnew([&] { person->setIdentifier(7); }));
  EXPECT_TRUE(isNotedAnew([&] {
    person->setLocation(KorvaniNavigation::CLLocation(elsewhere, person->location().altitude(), 0,
                                                      0, KorvaniPlatform::clock()->date()));
  }));
  EXPECT_TRUE(isNotedAnew([&] {
    person->setLocation(
        KorvaniNavigation::CLLocation(elsewhere, 5, 0, 0, KorvaniPlatform::clock()->date()));
  }));
}

}  // namespace
}  // namespace KorvaniTest
