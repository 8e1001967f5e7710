#include "Drawing/Viewer/Timeline.hpp"

#include <gmock/gmock.h>

#include <vector>

#include "Trace/TraceError.hpp"
#include "ViewerCase.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Moment;
using KorvaniTools::Timeline;
using KorvaniTools::TimelinePoint;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class TimelineOfATrace : public ViewerFixture {
 protected:
  std::vector<std::int64_t> secondsOf(const std::string& trace) const {
    std::vector<std::int64_t> seconds;
    for (const Moment& moment : timeline(trace).moments) seconds.push_back(moment.second);
    return seconds;
  }
};

double southOf(const std::optional<TimelinePoint>& point) {
  return point ? (10 - point->coordinate.latitude) / kNorth : -1000;
}

double eastOf(const std::optional<TimelinePoint>& point) {
  return point ? (point->coordinate.longitude - 20) / kEast : -1000;
}

TEST_F(TimelineOfATrace, HasAMomentForEveryLineThatSaysSomething) {
  const Timeline made = timeline("# comment\n\n" + lineAt("snap", 1, 1) + "{\"op\":\"cancel\"}\n");
  ASSERT_THAT(made.moments, SizeIs(2));
  EXPECT_EQ(made.moments[0].line, 3U);
  EXPECT_EQ(made.moments[0].operation, "snap");
  EXPECT_EQ(made.moments[1].line, 4U);
  EXPECT_EQ(made.moments[1].operation, "cancel");
}

TEST_F(TimelineOfATrace, EveryPositionTakesASecond) {
  EXPECT_THAT(secondsOf(lineAt("snap", 1, 0) + lineAt("snap", 2, 0) + lineAt("snap", 3, 0)),
              ElementsAre(0, 1, 2));
}

TEST_F(TimelineOfATrace, QuestionsAboutTheSamePositionShareItsSecond) {
  EXPECT_THAT(secondsOf(routeTo(20, 0) + lineAt("check", 1, 0) + lineAt("snap", 1, 0) +
                        lineAt("position", 1, 0) + lineAt("check", 2, 0)),
              ElementsAre(0, 1, 1, 1, 2));
}

TEST_F(TimelineOfATrace, StandingStillTakesTimeAsWell) {
  EXPECT_THAT(secondsOf(lineAt("snap", 1, 0) + lineAt("snap", 1, 0) + lineAt("snap", 1, 0)),
              ElementsAre(0, 1, 2));
}

TEST_F(TimelineOfATrace, LinesWithoutPositionTakeNoTime) {
  EXPECT_THAT(secondsOf("{\"op\":\"config\",\"config\":\"other\"}\n" + lineAt("snap", 1, 0) +
                        "{\"op\":\"cancel\"}\n" + lineAt("snap", 2, 0)),
              ElementsAre(0, 0, 0, 1));
}

TEST_F(TimelineOfATrace, ASnapTellsWhereThePositionIsAndWhereItBelongs) {
  const Moment moment = timeline(lineAt("snap", 5, 2)).moments.front();
  EXPECT_NEAR(southOf(moment.raw), 2, 0.01);
  EXPECT_NEAR(southOf(moment.snapped), 0, 0.01);
  EXPECT_NEAR(eastOf(moment.snapped), 5, 0.1);
  EXPECT_EQ(moment.snapped->level, 0);
  EXPECT_FALSE(moment.checked);
  EXPECT_FALSE(moment.denied);
}

TEST_F(TimelineOfATrace, TheNextPositionForgetsWhereTheLastOneWasSnapped) {
  const Timeline made = timeline(lineAt("snap", 5, 2) + lineAt("check", 6, 2));
  EXPECT_FALSE(made.moments[1].snapped);
  EXPECT_TRUE(made.moments[1].checked);
}

TEST_F(TimelineOfATrace, ARouteComesWithItsWordsAndTheWayLeft) {
  const Timeline made = timeline(routeTo(20, 0) + lineAt("position", 6, 0));
  ASSERT_THAT(made.routes, SizeIs(1));
  EXPECT_EQ(made.routes[0].end.name, "Desk");
  EXPECT_FALSE(made.routes[0].direct);
  ASSERT_FALSE(made.routes[0].instructions.empty());
  EXPECT_THAT(made.routes[0].instructions.back().text, HasSubstr("you reach Desk"));
  const Moment& start = made.moments[0];
  EXPECT_EQ(start.route, 0U);
  EXPECT_FALSE(start.rerouted);
  EXPECT_EQ(start.told, made.routes[0].instructions.front().text);
  EXPECT_EQ(start.instruction, 0U);
  const Moment& onTheWay = made.moments[1];
  EXPECT_LT(onTheWay.remaining, start.remaining - 4);
  EXPECT_NEAR(eastOf(onTheWay.ahead.front()), 6, 0.2);
  EXPECT_NEAR(eastOf(onTheWay.ahead.back()), 20, 0.2);
}

TEST_F(TimelineOfATrace, WhatASnapAnswersStaysWhenThePositionGoesToTheRoute) {
  const Timeline made =
      timeline(routeTo(20, 0) + lineAt("snap", 10, 4) + lineAt("position", 10, 4));
  const Moment& guided = made.moments[2];
  EXPECT_EQ(guided.second, made.moments[1].second);
  EXPECT_EQ(guided.snapped, made.moments[1].snapped);
  EXPECT_TRUE(guided.snapped);
  EXPECT_FALSE(guided.ahead.empty());
  EXPECT_FALSE(timeline(routeTo(20, 0) + lineAt("position", 6, 0)).moments[1].snapped)
      << "nobody asked";
}

TEST_F(TimelineOfATrace, ARouteKnowsWhereTheGuidanceBegan) {
  // The second route is another way, from where the person has strayed to.
  const Timeline made = timeline(routeTo(20, 0) + lineAt("position", 15, 9));
  ASSERT_THAT(made.routes, SizeIs(2));
  for (const auto& route : made.routes) {
    EXPECT_EQ(route.start.name, "Door");
    EXPECT_EQ(route.end.name, "Desk");
  }
}

TEST_F(TimelineOfATrace, AGuidanceThatBeginsNowhereBeginsWhereItsRouteDoes) {
  const Timeline made = timeline(R"({"op":"route","from":{"lat":1e300,"lon":20,"level":0},"to":[)" +
                                 pointAt(20, 0) + "]}\n" + lineAt("position", 1, 0));
  for (const auto& route : made.routes) {
    EXPECT_NEAR(route.start.coordinate.latitude, 10, 0.01);
  }
}

TEST_F(TimelineOfATrace, WhoFollowsTheRouteKeepsIt) {
  const Timeline made = timeline(routeTo(30, 10, 1) + lineAt("position", 4, 0) +
                                 lineAt("position", 9, 1) + lineAt("position", 10, 6));
  EXPECT_THAT(made.routes, SizeIs(1));
  for (const Moment& moment : made.moments) {
    EXPECT_EQ(moment.route, 0U);
    EXPECT_FALSE(moment.rerouted);
  }
  EXPECT_GT(*made.moments[3].instruction, *made.moments[0].instruction);
}

TEST_F(TimelineOfATrace, TheWordsOfARouteNameTheConnectionToAnotherLevel) {
  const Timeline made = timeline(routeTo(30, 10, 1));
  std::string all;
  for (const auto& instruction : made.routes.at(0).instructions) all += instruction.text + '\n';
  EXPECT_THAT(all, HasSubstr("stairs up to level 1"));
  EXPECT_EQ(made.moments[0].ahead.back().level, 1);
}

TEST_F(TimelineOfATrace, AnotherWayIsARerouting) {
  // Behind the wall, out of sight of the way.
  const Timeline made = timeline(routeTo(20, 0) + lineAt("position", 15, 9));
  ASSERT_THAT(made.routes, SizeIs(2));
  EXPECT_TRUE(made.moments[1].rerouted);
  EXPECT_EQ(made.moments[1].route, 1U);
  EXPECT_EQ(made.routes[1].end.name, "Desk");
  EXPECT_EQ(made.moments[1].instruction, 0U);
}

TEST_F(TimelineOfATrace, ARouteThatIsAskedForIsNoRerouting) {
  const Timeline made = timeline(routeTo(20, 0) + routeTo(30, 10, 1));
  EXPECT_EQ(made.moments[1].route, 1U);
  EXPECT_FALSE(made.moments[1].rerouted);
}

TEST_F(TimelineOfATrace, ArrivalEndsTheRouteAndSaysWhere) {
  const Timeline made =
      timeline(routeTo(20, 0) + lineAt("position", 20, 0) + lineAt("snap", 20, 0));
  const Moment& arrival = made.moments[1];
  EXPECT_TRUE(arrival.arrived);
  EXPECT_EQ(arrival.told, "you have reached Desk");
  EXPECT_FALSE(arrival.route);
  EXPECT_THAT(arrival.ahead, IsEmpty());
  EXPECT_EQ(arrival.remaining, 0);
  EXPECT_FALSE(made.moments[2].arrived);
  EXPECT_EQ(made.moments[2].told, "you have reached Desk");
}

TEST_F(TimelineOfATrace, ADestinationThatIsNoPlaceHasNoName) {
  EXPECT_EQ(timeline(routeTo(10, 10)).routes.at(0).end.name, "the destination");
}

TEST_F(TimelineOfATrace, AWayThatIsNotMappedIsDirect) {
  std::istringstream trace(routeTo(20, 0));
  const auto building = parsed({viewerNode(1, 0, 0, 0), viewerNode(2, 0, 5, 0), edgeOf(1, 2),
                                viewerNode(3, 0, 20, 0), viewerNode(4, 0, 25, 0), edgeOf(3, 4)});
  const Timeline made = KorvaniTools::makeTimeline(building, trace, "test.trace.ndjson");
  ASSERT_THAT(made.routes, SizeIs(1));
  EXPECT_TRUE(made.routes[0].direct);
}

TEST_F(TimelineOfATrace, AJumpThroughAWallIsDeniedAndHeldWhereItCameFrom) {
  const std::string byCredit = R"(,"denier":"default")";
  std::string trace;
  for (const double east : {1.0, 2.0, 3.0, 4.0, 5.0}) {
    trace += lineAt("check", east, 3, 0, byCredit);
  }
  trace += lineAt("check", 5, 8, 0, byCredit);
  const Timeline made = timeline(trace);
  const Moment& clear = made.moments[4];
  EXPECT_FALSE(clear.denied);
  EXPECT_NEAR(southOf(clear.checked), 3, 0.01);
  const Moment& jump = made.moments[5];
  EXPECT_TRUE(jump.denied);
  EXPECT_NEAR(southOf(jump.raw), 8, 0.01);
  EXPECT_NEAR(southOf(jump.checked), 3, 0.01);
}

TEST_F(TimelineOfATrace, WhatACheckLeavesOfAReadingBelongsToIt) {
  const std::string byCredit = R"(,"denier":"default")";
  std::string trace;
  for (const double east : {1.0, 2.0, 3.0, 4.0, 5.0}) {
    trace += lineAt("check", east, 3, 0, byCredit);
  }
  // A host that goes on with the answer of the check.
  trace += lineAt("check", 5, 8, 0, byCredit) + lineAt("snap", 5, 3);
  const Timeline made = timeline(trace);
  EXPECT_TRUE(made.moments[5].denied);
  EXPECT_EQ(made.moments[6].second, made.moments[5].second);
  EXPECT_NEAR(southOf(made.moments[6].raw), 8, 0.01);
  EXPECT_TRUE(made.moments[6].snapped);
}

TEST_F(TimelineOfATrace, ALineThatCannotBeCarriedOutSaysWhyAndChangesNothingElse) {
  const Timeline made = timeline(routeTo(20, 0) + R"({"op":"route","from":)" + pointAt(0, 0) +
                                 R"(,"to":[]})"
                                 "\n" +
                                 lineAt("snap", 1, 0));
  EXPECT_THAT(made.moments[1].error, HasSubstr("at least one"));
  EXPECT_EQ(made.moments[1].route, 0U);
  EXPECT_EQ(made.moments[2].error, "");
}

TEST_F(TimelineOfATrace, ACancelEndsTheRoute) {
  const Timeline made = timeline(routeTo(20, 0) + "{\"op\":\"cancel\"}\n");
  EXPECT_FALSE(made.moments[1].route);
  EXPECT_EQ(made.moments[1].told, "");
}

TEST_F(TimelineOfATrace, PositionsBeyondTheEarthAreNowhere) {
  const Timeline made = timeline(R"({"op":"snap","at":{"lat":1e308,"lon":-1e308,"level":0}})"
                                 "\n"
                                 R"({"op":"check","at":{"lat":91,"lon":20,"level":0}})"
                                 "\n");
  EXPECT_FALSE(made.moments[0].raw);
  EXPECT_FALSE(made.moments[1].raw);
  EXPECT_FALSE(made.moments[1].checked);
}

TEST_F(TimelineOfATrace, AMalformedLineIsAnErrorThatNamesIt) {
  try {
    timeline(lineAt("snap", 1, 0) + "{\"op\":\"fly\"}\n");
    FAIL() << "no error";
  } catch (const KorvaniTools::TraceError& error) {
    EXPECT_THAT(error.what(), HasSubstr("test.trace.ndjson"));
    EXPECT_THAT(error.what(), HasSubstr("2"));
  }
}

TEST_F(TimelineOfATrace, TheSameTraceGivesTheSameMoments) {
  const std::string trace = routeTo(30, 10, 1) + lineAt("snap", 4, 1) + lineAt("position", 4, 1);
  const Timeline one = timeline(trace);
  const Timeline other = timeline(trace);
  ASSERT_EQ(one.moments.size(), other.moments.size());
  for (std::size_t i = 0; i < one.moments.size(); ++i) {
    EXPECT_EQ(one.moments[i].ahead, other.moments[i].ahead);
    EXPECT_EQ(one.moments[i].told, other.moments[i].told);
    EXPECT_EQ(one.moments[i].snapped, other.moments[i].snapped);
  }
}

}  // namespace
}  // namespace KorvaniTest
