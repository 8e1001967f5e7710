#include "Recorder/Recorder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "Navigation/Obstacles/DefaultObstacleDenier.hpp"
#include "Recorder/RecorderFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::PointPtr;
using KorvaniTest::TextBuilding;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Distances are plain ground distances here, so that drawn metres are metres.
class RecorderTest : public KorvaniTest::RecorderFixture {
 protected:
  RecorderTest() { config().setLevelHeight(0); }

  /// What was written after the line that says the level height.
  std::vector<std::string> linesAfterConfig() const {
    auto all = lines();
    if (!all.empty() && all.front() == kConfigLine) all.erase(all.begin());
    return all;
  }

  std::shared_ptr<IntersectionTask> intersection(const PointPtr& at) {
    return std::make_shared<IntersectionTask>(
        bundle(), at, [](const auto&) {}, true);
  }

  PointPtr at(double column) const { return building.position(0, column, 0); }
  const PointPtr& a() const { return building.point("A"); }
  const PointPtr& b() const { return building.point("B"); }
  const PointPtr& c() const { return building.point("C"); }
  PointPtr nowhere() const { return KorvaniTest::at(std::numeric_limits<double>::quiet_NaN(), 11); }

  static constexpr auto kConfigLine = R"({"op":"config","fields":{"levelHeight":0.0}})";
  const TextBuilding building{"A---------B---------C", 5};
};

TEST_F(RecorderTest, WritesTheConfigurationAndARoutingWhenItIsRun) {
  record(building.graph());
  EXPECT_THAT(lines(), IsEmpty());
  const auto task = navigation().routingTask(a(), {b(), c()}, recorder());
  EXPECT_THAT(lines(), IsEmpty());
  recording.run(task);
  EXPECT_THAT(lines(), ElementsAre(kConfigLine, routeLine(a(), {b(), c()})));
  pump();
  EXPECT_EQ(deliveries().size(), 1U) << "the task runs";
}

TEST_F(RecorderTest, WritesConfigurationFlagsAndInstructionsOfARouting) {
  record(building.graph());
  navigation().addConfig("night");
  const auto task = navigation().routingTask(a(), {b()}, "night", recorder());
  task->setBarrierFree(true);
  task->setDirections(true);
  recording.run(task);
  EXPECT_EQ(lines().back(), KorvaniTools::traceLine(KorvaniTools::RouteOperation{
                                placeOf(a()), {placeOf(b())}, "night", true, true}));
}

TEST_F(RecorderTest, WritesWhatChangedInAConfigurationBeforeTheNextLine) {
  record(building.graph());
  const auto task = lead(a(), {c()});
  config().setTargetProximityDistance(2);
  walkTo(at(3));
  EXPECT_THAT(linesAfterConfig(),
              ElementsAre(routeLine(a(), {c()}),
                          R"({"op":"config","set":{"navigationTargetProximityDistance":2.0}})",
                          positionLine(at(3))));
}

TEST_F(RecorderTest, WritesAPositionThatIsTaken) {
  record(building.graph());
  const auto task = lead(a(), {c()});
  EXPECT_TRUE(walkTo(at(3)));
  EXPECT_TRUE(walkTo(at(4)));
  EXPECT_THAT(linesAfterConfig(),
              ElementsAre(routeLine(a(), {c()}), positionLine(at(3)), positionLine(at(4))));
}

TEST_F(RecorderTest, LeavesOutAPositionThatATaskDropsBecauseItWorks) {
  record(building.graph());
  const auto task = lead(a(), {c()});
  const auto update = deliveries().back().update;
  EXPECT_TRUE(recording.updateStartPoint(*update, at(3)));
  EXPECT_FALSE(recording.updateStartPoint(*update, at(4)));
  EXPECT_THAT(linesAfterConfig(), ElementsAre(routeLine(a(), {c()}), positionLine(at(3))));
}

TEST_F(RecorderTest, LeavesOutAPositionAfterTheArrival) {
  record(building.graph());
  const auto task = lead(a(), {b()});
  const auto update = deliveries().back().update;
  walkTo(at(10));
  ASSERT_TRUE(deliveries().back().finished);
  EXPECT_FALSE(recording.updateStartPoint(*update, at(9)));
  recording.updateDestinations(task, {c()});
  EXPECT_THAT(linesAfterConfig(), ElementsAre(routeLine(a(), {b()}), positionLine(at(10))));
}

TEST_F(RecorderTest, ARoutingThatIsRunAgainIsAPosition) {
  record(building.graph());
  const auto task = lead(a(), {c()});
  recording.run(task);
  recording.run(task);  // dropped, since it works
  pump();
  EXPECT_EQ(deliveries().size(), 2U);
  EXPECT_THAT(linesAfterConfig(), ElementsAre(routeLine(a(), {c()}), positionLine(a())));
}

TEST_F(RecorderTest, ARoutingThatGoesOnAfterAnotherIsStartedAnewWhereItIs) {
  record(building.graph());
  const auto first = lead(a(), {c()});
  const auto update = deliveries().back().update;
  const auto second = lead(c(), {a()});
  EXPECT_TRUE(recording.updateStartPoint(*update, at(3)));
  EXPECT_THAT(linesAfterConfig(),
              ElementsAre(routeLine(a(), {c()}), routeLine(c(), {a()}), routeLine(at(3), {c()})));
}

TEST_F(RecorderTest, WritesDestinationsOfTheRoutingThatGoesOn) {
  record(building.graph());
  const auto task = lead(a(), {c()});
  recording.updateDestinations(task, {b()});
  EXPECT_THAT(linesAfterConfig(), ElementsAre(routeLine(a(), {c()}), destinationsLine({b()})));
  EXPECT_THAT(task->possibleDestinations(), ElementsAre(b()));
  EXPECT_THAT(remarks(), SizeIs(1));
}

TEST_F(RecorderTest, WritesDestinationsThatComeBeforeTheFirstRunWithIt) {
  record(building.graph());
  const auto task = navigation().routingTask(a(), {c()}, recorder());
  recording.updateDestinations(task, {b()});
  recording.run(task);
  EXPECT_THAT(linesAfterConfig(), ElementsAre(routeLine(a(), {b()})));
}

TEST_F(RecorderTest, RemarksDestinationsThatComeDuringAnExecution) {
  record(building.graph());
  const auto task = navigation().routingTask(a(), {c()}, recorder());
  recording.run(task);
  recording.updateDestinations(task, {b()});
  EXPECT_EQ(linesAfterConfig().back(), destinationsLine({b()}));
  EXPECT_THAT(remarks().back(), HasSubstr("came while the routing was working"));
}

TEST_F(RecorderTest, RemarksFlagsThatChangeDuringARouting) {
  record(building.graph());
  const auto task = lead(a(), {c()});
  task->setDirections(true);
  walkTo(at(2));
  walkTo(at(3));
  ASSERT_THAT(remarks(), SizeIs(2));
  EXPECT_THAT(remarks().back(), HasSubstr("barrierFree false and directions true"));
}

TEST_F(RecorderTest, WritesSnappingTasks) {
  record(building.graph());
  CLLocationCoordinate2D shown{};
  const auto handler = [&](CLLocationCoordinate2D coordinate) { shown = coordinate; };
  const auto task = navigation().snappingTask(false, at(1), handler);
  recording.run(task);
  EXPECT_NE(shown, CLLocationCoordinate2D());
  navigation().addConfig("night");
  recording.run(navigation().snappingTask(true, at(2), "night", handler));
  recording.run(task);
  using KorvaniTools::SnapOperation;
  using KorvaniTools::traceLine;
  EXPECT_THAT(linesAfterConfig(), ElementsAre(traceLine(SnapOperation{placeOf(at(1)), {}}),
                                              R"({"op":"config","config":"night"})",
                                              traceLine(SnapOperation{placeOf(at(2)), "night"}),
                                              traceLine(SnapOperation{placeOf(at(1)), {}})));
  EXPECT_THAT(remarks().back(), HasSubstr("this task ran before"));
}

TEST_F(RecorderTest, WritesIntersectionTasks) {
  record(building.graph());
  const auto task = intersection(at(1));
  recording.run(task);
  EXPECT_TRUE(task->intersection());
  recording.run(std::make_shared<IntersectionTask>(
      bundle(), at(2), [](const auto&) {}, false));
  EXPECT_THAT(
      linesAfterConfig(),
      ElementsAre(intersectLine(at(1)), KorvaniTools::traceLine(KorvaniTools::IntersectOperation{
                                            placeOf(at(2)), false})));
}

TEST_F(RecorderTest, WritesObstacleChecksWithTheirDenier) {
  record(building.graph());
  const auto handler = [](CLLocationCoordinate2D) {};
  const auto check = navigation().obstacleCheckTask(false, at(1), handler);
  recording.run(check);
  check->updatePoint(at(2));
  recording.run(check);
  EXPECT_EQ(check->checkedPoint(), at(2)->coordinate());
  const auto credit = [&] {
    return std::make_shared<ObstacleCheckTask>(
        bundle(), false, at(3), std::make_shared<DefaultObstacleDenier>(bundle()), handler);
  };
  const auto first = credit();
  recording.run(first, Recorder::Denier::byCredit);
  recording.run(first, Recorder::Denier::byCredit);
  EXPECT_THAT(remarks(), SizeIs(1));
  recording.run(credit(), Recorder::Denier::byCredit);
  EXPECT_THAT(remarks().back(), HasSubstr("this denier is another one"));
  const auto line = [&](double column, KorvaniTools::TraceDenier denier) {
    return KorvaniTools::traceLine(KorvaniTools::CheckOperation{placeOf(at(column)), {}, denier});
  };
  using KorvaniTools::TraceDenier;
  EXPECT_THAT(linesAfterConfig(),
              ElementsAre(line(1, TraceDenier::strength), line(2, TraceDenier::strength),
                          line(3, TraceDenier::byCredit), line(3, TraceDenier::byCredit),
                          line(3, TraceDenier::byCredit)));
}

TEST_F(RecorderTest, WritesThatAllTasksAreCancelled) {
  record(building.graph());
  const auto task = lead(a(), {c()});
  const auto update = deliveries().back().update;
  recording.cancelAllTasks();
  EXPECT_FALSE(navigation().graph());
  EXPECT_FALSE(navigation().activeRoutingTask());
  EXPECT_THAT(linesAfterConfig(), ElementsAre(routeLine(a(), {c()}), R"({"op":"cancel"})"));
  // Who goes on with a cancelled routing starts it anew, when there is a graph.
  EXPECT_TRUE(recording.updateStartPoint(*update, at(2)));
  EXPECT_THAT(linesAfterConfig(), SizeIs(2));
  record(building.graph());
  EXPECT_THAT(linesAfterConfig().back(), routeLine(at(2), {c()}));
  EXPECT_THAT(recording.files(), SizeIs(1));
}

TEST_F(RecorderTest, WritesTheEndOfTheRoutingThatIsRemoved) {
  record(building.graph());
  const auto first = lead(a(), {c()});
  const auto second = lead(c(), {a()});
  recording.removeTask(first);
  EXPECT_THAT(linesAfterConfig(), SizeIs(2)) << "the trace has left it already";
  recording.removeTask(second);
  EXPECT_FALSE(navigation().activeRoutingTask());
  EXPECT_TRUE(navigation().graph());
  EXPECT_THAT(linesAfterConfig().back(), R"({"op":"cancel"})");
  EXPECT_THAT(remarks().back(), HasSubstr("let the routing go"));
}

TEST_F(RecorderTest, WritesTasksThatWaitForAGraphWhenItIsAnnounced) {
  const auto place = intersection(at(1));
  const auto task = navigation().routingTask(a(), {c()}, recorder());
  recording.run(task);
  recording.run(place);
  recording.run(place);
  recording.run(task);
  recording.provideGraph(building.graph());
  EXPECT_THAT(lines(), IsEmpty());
  announceGraph();
  EXPECT_THAT(linesAfterConfig(),
              ElementsAre(routeLine(a(), {c()}), intersectLine(at(1)), intersectLine(at(1))));
  EXPECT_TRUE(place->intersection());
  pump();
  EXPECT_EQ(deliveries().size(), 1U);
  // Who once waited starts with every announcement.
  announceGraph();
  EXPECT_THAT(linesAfterConfig(), SizeIs(6));
  EXPECT_EQ(linesAfterConfig()[3], positionLine(a()));
}

TEST_F(RecorderTest, ForgetsAWaitingTaskThatIsGone) {
  recording.run(intersection(at(1)));
  recording.run(intersection(at(2)));
  record(building.graph());
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(RecorderTest, LeavesOutWhatHasNoFiniteCoordinateAndSaysSo) {
  record(building.graph());
  recording.run(intersection(nowhere()));
  recording.run(navigation().snappingTask(false, nowhere(), [](CLLocationCoordinate2D) {}));
  EXPECT_THAT(lines(), IsEmpty());
  EXPECT_THAT(recording.problems(), ElementsAre(HasSubstr("intersect: found a coordinate"),
                                                HasSubstr("snap: found a coordinate")));
  EXPECT_THAT(remarks(), SizeIs(3));
}

TEST_F(RecorderTest, ALineStandsInTheFileBeforeTheWorkBegins) {
  class Looker : public KorvaniPlatform::Executor {
   public:
    explicit Looker(std::function<void()> look) : look_(std::move(look)) {}
    void execute(KorvaniPlatform::Job job) override {
      look_();
      KorvaniPlatform::mainQueue().async(std::move(job));
    }

   private:
    std::function<void()> look_;
  };
  record(building.graph());
  std::vector<std::string> last;
  KorvaniPlatform::setGlobalExecutor(
      std::make_shared<Looker>([&] { last.push_back(lines().back()); }));
  const auto task = lead(a(), {c()});
  walkTo(at(3));
  EXPECT_THAT(last, ElementsAre(routeLine(a(), {c()}), positionLine(at(3))));
  KorvaniPlatform::setGlobalExecutor(nullptr);
}

TEST_F(RecorderTest, AHandlerMayFeedTheNextPosition) {
  record(building.graph());
  double column = 2;
  const auto task =
      navigation().routingTask(a(), {c()}, [&](auto update, auto, bool finished, auto) {
        if (!finished && column < 6) recording.updateStartPoint(*update, at(column++));
      });
  recording.run(task);
  pump();
  EXPECT_THAT(linesAfterConfig(),
              ElementsAre(routeLine(a(), {c()}), positionLine(at(2)), positionLine(at(3)),
                          positionLine(at(4)), positionLine(at(5))));
}

TEST_F(RecorderTest, ATaskThatIsNotThereIsNotRun) {
  record(building.graph());
  recording.run(navigation().routingTask(a(), {}, recorder()));
  recording.run(navigation().snappingTask(true, a(), "unknown", [](CLLocationCoordinate2D) {}));
  recording.updateDestinations(nullptr, {a()});
  recording.removeTask(nullptr);
  const RoutingUpdateTask handle{std::weak_ptr<RoutingTask>()};
  EXPECT_FALSE(recording.updateStartPoint(handle, at(1)));
  EXPECT_THAT(lines(), IsEmpty());
}

}  // namespace
}  // namespace KorvaniNavigation
