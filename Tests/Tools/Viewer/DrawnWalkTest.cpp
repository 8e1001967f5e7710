#include "Drawing/Viewer/DrawnWalk.hpp"

#include <gmock/gmock.h>

#include "Drawing/Scene.hpp"
#include "ViewerCase.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::DrawnRoute;
using KorvaniTools::firstRoute;
using KorvaniTools::makeScene;
using KorvaniTools::Scene;
using KorvaniTools::SceneTrack;
using KorvaniTools::Timeline;
using KorvaniTools::tracksOf;
using testing::IsEmpty;
using testing::SizeIs;

class DrawnWalk : public ViewerFixture {
 protected:
  std::vector<SceneTrack> tracks(const std::string& trace) const {
    return tracksOf(timeline(trace), scene_.frame);
  }

  const Scene scene_ = makeScene(viewerBuilding());
};

/// Readings below the wall, and one that comes from behind it.
std::string jumpThroughTheWall() {
  const std::string byCredit = R"(,"denier":"default")";
  std::string trace;
  for (const double east : {1.0, 2.0, 3.0, 4.0, 5.0}) {
    trace += lineAt("check", east, 3, 0, byCredit);
  }
  return trace + lineAt("check", 5, 8, 0, byCredit);
}

TEST_F(DrawnWalk, HasTheRouteWithItsMarks) {
  const auto route = firstRoute(timeline(routeTo(30, 10, 1)), scene_.frame);
  ASSERT_TRUE(route);
  EXPECT_EQ(route->start.name, "Door");
  EXPECT_EQ(route->destination.name, "Archive");
  ASSERT_THAT(route->changes, SizeIs(1));
  EXPECT_EQ(route->changes[0].type, "stairs");
  EXPECT_EQ(route->changes[0].symbol, KorvaniTools::ConnectionSymbol::stairs);
  EXPECT_FALSE(route->arrows.empty());
  EXPECT_FALSE(route->direct);
}

TEST_F(DrawnWalk, TakesAsLongAsTheEngineSays) {
  const Timeline made = timeline(routeTo(30, 10, 1));
  EXPECT_EQ(firstRoute(made, scene_.frame)->travelTime, made.routes[0].found.travelTime());
}

TEST_F(DrawnWalk, HasNoRouteWhenNoneWasAskedFor) {
  EXPECT_FALSE(firstRoute(timeline(lineAt("snap", 1, 0)), scene_.frame));
}

TEST_F(DrawnWalk, ShowsWhereSnappingPutThePerson) {
  const auto all = tracks(routeTo(20, 0) + lineAt("snap", 4, 1) + lineAt("position", 4, 1) +
                          lineAt("snap", 7, 9, 1));
  ASSERT_THAT(all, SizeIs(2));
  EXPECT_THAT(all[0].measured, SizeIs(2)) << "the start, and one reading that was used twice";
  EXPECT_THAT(all[0].snapped, SizeIs(1));
  EXPECT_EQ(all[1].level, 1);
  EXPECT_THAT(all[1].measured, SizeIs(1));
}

TEST_F(DrawnWalk, WithoutSnappingShowsThePlaceOnTheRoute) {
  const auto all = tracks(routeTo(20, 0) + lineAt("position", 4, 1) + lineAt("position", 6, 1));
  ASSERT_THAT(all, SizeIs(1));
  ASSERT_THAT(all[0].snapped, SizeIs(2));
  EXPECT_NEAR(all[0].snapped[1].x - all[0].snapped[0].x, 2, 0.1);
}

TEST_F(DrawnWalk, OfChecksAloneShowsWhatTheyLetThrough) {
  const auto all = tracks(jumpThroughTheWall());
  ASSERT_THAT(all, SizeIs(1));
  EXPECT_THAT(all[0].measured, SizeIs(6));
  EXPECT_THAT(all[0].snapped, Not(IsEmpty()));
}

TEST_F(DrawnWalk, MarksJumpsThatWereDenied) {
  const auto all = tracks(jumpThroughTheWall());
  ASSERT_THAT(all, SizeIs(1));
  ASSERT_THAT(all[0].denied, SizeIs(1));
  const auto& jump = all[0].denied[0];
  ASSERT_TRUE(jump.held);
  EXPECT_NEAR(jump.came.y - jump.held->y, 5, 0.1) << "through the wall";
}

}  // namespace
}  // namespace KorvaniTest
