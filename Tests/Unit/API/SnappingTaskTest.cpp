#include "Navigation/API/Tasks/SnappingTask.hpp"

#include <gtest/gtest.h>

#include "Navigation/Localisation/Intersection.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::PointPtr;
using KorvaniTest::TextBuilding;

/// A corridor of 40 m, from whose middle a way leads aside to D.
class SnappingTaskTest : public KorvaniTest::FlatFacadeFixture {
 protected:
  void open() { provide(building.graph()); }

  /// A handler that keeps what it gets.
  SnappingTask::CompletionHandler keep() {
    return [this](CLLocationCoordinate2D coordinate) { snapped.push_back(coordinate); };
  }

  std::shared_ptr<SnappingTask> snap(const PointPtr& position) {
    auto task = navigation().snappingTask(position, keep());
    task->run();
    pump();
    return task;
  }

  TextBuilding building{R"(
A---------B---------C
          |
          |
          D          )",
                        2};
  std::vector<CLLocationCoordinate2D> snapped;
};

TEST_F(SnappingTaskTest, StartsWithoutResult) {
  const PointPtr position = building.position(0, 3, 1);
  const auto task = navigation().snappingTask(position, keep());
  EXPECT_FALSE(task->intersection());
  EXPECT_FALSE(task->originalPoint());
  EXPECT_EQ(task->point(), position);
  EXPECT_FALSE(task->running());
  EXPECT_EQ(task->description().rfind("KorvaniNavigation.SnappingTask, identifier: ", 0), 0U);
}

TEST_F(SnappingTaskTest, GivesTheCoordinateOfTheNodeThatFits) {
  open();
  const PointPtr position = building.position(0, 21, 0);
  const auto task = snap(position);
  ASSERT_EQ(snapped.size(), 1U);
  EXPECT_EQ(snapped[0], building.point("C")->coordinate());
  EXPECT_EQ(task->intersection()->node(), building.point("C"));
  EXPECT_EQ(task->originalPoint(), position);
  EXPECT_FALSE(task->running());
}

TEST_F(SnappingTaskTest, GivesTheCoordinateOnTheEdgeThatFits) {
  open();
  const auto task = snap(building.position(0, 4, 0.4));
  ASSERT_EQ(snapped.size(), 1U);
  EXPECT_EQ(task->intersection()->kind(), IntersectionKind::edge);
  const auto expected = building.coordinate(0, 4, 0);
  EXPECT_LT(KorvaniPlatform::greatCircleDistance(snapped[0], expected), 0.01);
}

TEST_F(SnappingTaskTest, GivesThePositionItselfWhenNothingFits) {
  const TextBuilding cell(R"(
A-----B   ###
          # #
          ###)",
                          5);
  provide(cell.graph());
  const PointPtr position = cell.position(0, 11, 1);
  const auto task = snap(position);
  ASSERT_EQ(snapped.size(), 1U);
  EXPECT_EQ(snapped[0], position->coordinate());
  EXPECT_FALSE(task->intersection());
}

TEST_F(SnappingTaskTest, GivesThePositionItselfWhenTheGraphIsGoneByTheTimeOfTheWork) {
  open();
  const PointPtr position = building.position(0, 4, 0.4);
  const auto task = navigation().snappingTask(position, keep());
  task->run();
  navigation().cancelAllTasks();
  pump();
  ASSERT_EQ(snapped.size(), 1U);
  EXPECT_EQ(snapped[0], position->coordinate());
}

TEST_F(SnappingTaskTest, WaitsForAGraph) {
  const auto task = snap(building.position(0, 21, 0));
  EXPECT_TRUE(snapped.empty());
  open();
  pump();
  ASSERT_EQ(snapped.size(), 1U);
  EXPECT_EQ(snapped[0], building.point("C")->coordinate());
}

TEST_F(SnappingTaskTest, ASynchronousTaskHasDeliveredWhenRunReturns) {
  open();
  const auto task = navigation().snappingTask(false, building.position(0, 21, 0), keep());
  EXPECT_FALSE(task->async());
  task->run();
  ASSERT_EQ(snapped.size(), 1U);
  EXPECT_FALSE(task->running());
}

TEST_F(SnappingTaskTest, EachRunCallsTheHandlerOnceWithThePlaceOnTheGraphAsItIsThen) {
  open();
  const auto task = snap(building.position(0, 21, 0));
  const TextBuilding other("A---------B", 2);
  provide(other.graph());
  task->run();
  pump();
  ASSERT_EQ(snapped.size(), 2U);
  EXPECT_EQ(snapped[0], building.point("C")->coordinate());
  EXPECT_EQ(snapped[1], other.point("B")->coordinate());
}

TEST_F(SnappingTaskTest, AHandlerMayBeLeftOut) {
  open();
  const auto task = navigation().snappingTask(building.position(0, 21, 0), nullptr);
  task->run();
  pump();
  EXPECT_TRUE(task->intersection());
}

TEST_F(SnappingTaskTest, TheFacadeMakesThemForTheMainOrTheNamedConfiguration) {
  navigation().addConfig("second");
  const auto second = *navigation().navigationConfigs().find("second");
  const PointPtr position = building.position(0, 0, 0);
  const auto plain = navigation().snappingTask(position, keep());
  EXPECT_EQ(plain->configDependents(), bundle());
  EXPECT_TRUE(plain->async());
  EXPECT_EQ(navigation().snappingTask(true, position, keep())->configDependents(), bundle());
  EXPECT_TRUE(navigation().snappingTask(true, position, keep())->async());
  const auto named = navigation().snappingTask(false, position, "second", keep());
  EXPECT_EQ(named->configDependents(), second);
  EXPECT_FALSE(named->async());
  EXPECT_EQ(named->point(), position);
  EXPECT_FALSE(navigation().snappingTask(false, position, "third", keep()));
  EXPECT_FALSE(navigation().snappingTask(true, position, "", keep()));
}

TEST_F(SnappingTaskTest, WithoutARouteNoRoutingTaskIsTouched) {
  open();
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  navigation().removeTask(task);
  snap(building.position(0, 4, 0.4));
  EXPECT_FALSE(task->snappingTask());
  EXPECT_EQ(task->lastExecutionDuration(), 0.0);
}

TEST_F(SnappingTaskTest, OnTheActiveRouteThePositionGoesOntoTheRoute) {
  open();
  const PointPtr onTheWayToD = building.position(0, 10, 1);
  snap(onTheWayToD);
  guide(building.point("B"), {building.point("C")});
  const auto onRoute = snap(onTheWayToD);
  ASSERT_EQ(snapped.size(), 2U);
  EXPECT_EQ(onRoute->intersection()->node()->identifier(), building.point("B")->identifier());
  EXPECT_NE(snapped[0], snapped[1]) << "the graph offers a nearer place, but not on the route";
}

TEST_F(SnappingTaskTest, TheActiveRouteTakesOverTheTaskAndIsBroughtUpToDateWithoutPublication) {
  open();
  const auto routing = guide(building.point("A"), {building.point("C")});
  const auto before = routing->graphForRoute();
  const auto task = snap(building.position(0, 4, 0.4));
  EXPECT_EQ(routing->snappingTask(), task);
  EXPECT_NE(routing->graphForRoute(), before);
  EXPECT_FALSE(routing->running());
  EXPECT_EQ(deliveries().size(), 1U);
}

TEST_F(SnappingTaskTest, ARoutingTaskThatHasNotRunGetsItsFirstRoute) {
  open();
  const auto routing =
      navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  EXPECT_EQ(routing->graphForRoute(), building.graph());
  snap(building.position(0, 4, 0.4));
  EXPECT_NE(routing->graphForRoute(), building.graph());
  EXPECT_GT(routing->lastExecutionDuration(), 0.0);
  EXPECT_TRUE(deliveries().empty());
  routing->run();
  pump();
  ASSERT_EQ(deliveries().size(), 1U);
  ASSERT_TRUE(lastRoute());
  EXPECT_NEAR(lastRoute()->totalDistance(), 32, 0.05) << "from the snapped position on";
}

TEST_F(SnappingTaskTest, ARunningRouteIsOnlyGivenTheTaskAndThePositionGoesOntoTheRoute) {
  open();
  const auto routing = guide(building.point("A"), {building.point("C")});
  deliveries().back().update->updateStartPoint(building.position(0, 2, 0));
  ASSERT_TRUE(routing->running()) << "its work waits in the queue";
  const auto before = routing->graphForRoute();
  const auto task = navigation().snappingTask(false, building.position(0, 10, 2.8), keep());
  task->run();
  EXPECT_EQ(routing->snappingTask(), task);
  EXPECT_EQ(routing->graphForRoute(), before);
  EXPECT_TRUE(routing->running());
  ASSERT_EQ(snapped.size(), 1U);
  EXPECT_EQ(task->intersection()->node()->identifier(), building.point("B")->identifier());
}

TEST_F(SnappingTaskTest, ARouteOfAnotherConfigurationIsNotTouchedAndThePositionGoesOntoTheGraph) {
  navigation().addConfig("second");
  open();
  const auto routing = guide(building.point("A"), {building.point("C")});
  const auto before = routing->graphForRoute();
  const auto task =
      navigation().snappingTask(true, building.position(0, 10, 3.2), "second", keep());
  task->run();
  pump();
  EXPECT_FALSE(routing->snappingTask());
  EXPECT_EQ(routing->graphForRoute(), before);
  EXPECT_EQ(task->intersection()->node(), building.point("D"));
}

TEST_F(SnappingTaskTest, SnappingNeverAnnouncesTheArrival) {
  open();
  const auto routing = guide(building.point("A"), {building.point("C")});
  config().setTargetProximityDistance(100);  // whatever route snapping makes is short enough
  snap(building.position(0, 19.9, 0));
  snap(building.position(0, 20, 0));
  EXPECT_EQ(deliveries().size(), 1U);
  deliveries().back().update->updateStartPoint(building.position(0, 20, 0));
  pump();
  ASSERT_EQ(deliveries().size(), 2U);
  EXPECT_TRUE(deliveries().back().finished);
}

TEST_F(SnappingTaskTest, ARouteThatHasArrivedIsNotDrivenOn) {
  open();
  const auto routing = guide(building.position(0, 19.9, 0), {building.point("C")});
  ASSERT_TRUE(deliveries().back().finished);
  const auto reached = routing->graphForRoute();
  navigation().setActiveRoutingTask(routing);
  snap(building.position(0, 4, 0.4));
  EXPECT_EQ(routing->graphForRoute(), reached);
  EXPECT_FALSE(routing->running());
}

TEST_F(SnappingTaskTest, AMissingConfigurationIsAFatalError) {
  open();
  auto lost =
      std::static_pointer_cast<ConfigDependents>(navigation().createNewConfigDependents("lost"));
  const auto task = std::make_shared<SnappingTask>(lost, false, building.point("A"), keep());
  lost.reset();
  EXPECT_DEATH(task->run(), "is gone");
}

}  // namespace
}  // namespace KorvaniNavigation
