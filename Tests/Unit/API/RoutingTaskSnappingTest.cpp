#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string_view>

#include "Common/Logging.hpp"
#include "Navigation/API/Tasks/IntersectionTask.hpp"
#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Navigation/Localisation/Intersection.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::PointPtr;
using KorvaniTest::TextBuilding;

/// A corridor A-B-C of 80 m; 4 m north of it E-F, joined with it at both ends. A yard behind a wall
/// in the south, and a cell that sees nothing.
class RoutingTaskSnappingTest : public KorvaniTest::FlatFacadeFixture {
 protected:
  RoutingTaskSnappingTest() {
    config().setNavigationPathSnappingDistance(3);
    building.connect("A", "E").connect("F", "C");
    // Runs snapping tasks without driving the route, which is of another configuration.
    navigation().addConfig("aside");
    provide(building.graph());
    routing = guide(building.point("A"), {building.point("C")});
  }

  /// A snapping task that has seen this raw position.
  std::shared_ptr<SnappingTask> seen(const PointPtr& raw) {
    auto task = navigation().snappingTask(false, raw, "aside", nullptr);
    task->run();
    return task;
  }

  /// Goes on with `point`, the position before snapping being `raw`.
  void walkTo(const PointPtr& point, const PointPtr& raw) {
    routing->setSnappingTask(seen(raw));
    deliveries().back().update->updateStartPoint(point);
    pump();
  }

  /// Whether the last publication is the old route, shortened, and not a new one.
  bool isOldRoute() const { return lastRoute()->points().front() == building.point("A"); }

  TextBuilding building{R"(
    E-------F
    .       .
A-------B-------C   ###
                    # #
#################   ###

Y...............     )",
                        5};
  std::shared_ptr<RoutingTask> routing;
};

TEST_F(RoutingTaskSnappingTest, HasNoSnappingTaskAtFirstAndTakesTheOneItIsGiven) {
  EXPECT_FALSE(routing->snappingTask());
  const auto task = seen(building.point("B"));
  routing->setSnappingTask(task);
  EXPECT_EQ(routing->snappingTask(), task);
  routing->setSnappingTask(nullptr);
  EXPECT_FALSE(routing->snappingTask());
}

TEST_F(RoutingTaskSnappingTest, ARawPositionNearThePlaceOnTheRouteKeepsTheRoute) {
  walkTo(building.position(0, 4, 2), building.position(0, 4.4, 2.3));
  EXPECT_TRUE(isOldRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 60, 0.05) << "shortened to the snapped position";
}

TEST_F(RoutingTaskSnappingTest, ExactlyTheSnappingDistanceIsStillNear) {
  const PointPtr snapped = building.point("B");
  const PointPtr raw = building.position(0, 8, 2.9);
  config().setNavigationPathSnappingDistance(snapped->distanceFrom(*raw));
  walkTo(snapped, raw);
  EXPECT_TRUE(isOldRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 40, 0.05);
}

TEST_F(RoutingTaskSnappingTest, ARawPositionFarFromTheRouteGetsANewRouteFromThere) {
  const PointPtr raw = building.position(0, 6, -0.2);
  walkTo(building.position(0, 6, 2), raw);
  ASSERT_FALSE(isOldRoute());
  const auto points = lastRoute()->points();
  EXPECT_LT(points.front()->distanceFrom(*building.position(0, 6, 0)), 0.05)
      << "it starts where the raw position is mapped to, not the snapped one";
}

TEST_F(RoutingTaskSnappingTest, AFarRawPositionWhosePlaceOnTheGraphIsOnTheRouteKeepsTheRoute) {
  config().setNavigationPathSnappingDistance(0.5);
  walkTo(building.position(0, 4, 2), building.position(0, 4, 2.6));
  EXPECT_TRUE(isOldRoute()) << "3 m aside, but the nearest place is the same";
  EXPECT_NEAR(lastRoute()->remainingDistance(), 60, 0.05);
}

TEST_F(RoutingTaskSnappingTest, PlacesHalfTheSnappingDistanceApartAreNotTheSameAnyMore) {
  const PointPtr snapped = building.point("B");
  const PointPtr raw = building.position(0, 8.6, 2.8);
  // 5 m from the raw position, 3 m from its place on the graph; half of a little less than 6 m.
  config().setNavigationPathSnappingDistance(4.9);
  walkTo(snapped, raw);
  EXPECT_FALSE(isOldRoute());
}

TEST_F(RoutingTaskSnappingTest, PlacesNearerThanHalfTheSnappingDistanceAreTheSame) {
  const PointPtr snapped = building.point("B");
  const PointPtr raw = building.position(0, 8.4, 2.9);
  // 4.9 m from the raw position, 2 m from its place on the graph.
  config().setNavigationPathSnappingDistance(4.8);
  walkTo(snapped, raw);
  EXPECT_TRUE(isOldRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 40, 0.05);
}

TEST_F(RoutingTaskSnappingTest, PlacesExactlyHalfTheSnappingDistanceApartAreNotTheSame) {
  const PointPtr snapped = building.point("B");
  const PointPtr raw = building.position(0, 8.4, 2.9);
  IntersectionTask onGraph(
      bundle(), raw, [](const auto&) {}, true);
  const double apart = onGraph.intersect(*raw)->node()->distanceFrom(*snapped);
  config().setNavigationPathSnappingDistance(2 * apart);
  ASSERT_GT(raw->distanceFrom(*snapped), 2 * apart) << "or the raw position is near anyway";
  walkTo(snapped, raw);
  EXPECT_FALSE(isOldRoute());
}

TEST_F(RoutingTaskSnappingTest, WithoutAWayTheStraightLineStartsAtThePositionNotAtTheRawOne) {
  routing = navigation().routingTask(building.point("A"), {building.position(0, 1, 6)}, recorder());
  routing->setSnappingTask(seen(building.position(0, 12, 2.1)));
  routing->run();
  pump();
  ASSERT_TRUE(routing->isDirectLine());
  EXPECT_EQ(lastRoute()->steps().front().start(), building.point("A"));
}

TEST_F(RoutingTaskSnappingTest, ARawPositionThatSeesNothingOfTheGraphKeepsTheRouteThereWas) {
  walkTo(building.position(0, 4, 2), building.position(0, 21, 3));
  ASSERT_EQ(deliveries().size(), 2U);
  EXPECT_TRUE(isOldRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 80, 0.05) << "published again as it was";
}

TEST_F(RoutingTaskSnappingTest, ASnappedPositionOffTheRouteDoesNotHinderARawOneOnTheGraph) {
  walkTo(building.position(0, 21, 3), building.position(0, 6, 2));
  ASSERT_EQ(deliveries().size(), 2U);
  EXPECT_FALSE(isOldRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 50, 0.05);
}

TEST_F(RoutingTaskSnappingTest, ASnappingTaskThatHasNeverRunCountsAsNone) {
  routing->setSnappingTask(
      navigation().snappingTask(false, building.position(0, 6, -0.2), "aside", nullptr));
  deliveries().back().update->updateStartPoint(building.position(0, 4, 2));
  pump();
  EXPECT_TRUE(isOldRoute());
  EXPECT_NEAR(lastRoute()->remainingDistance(), 60, 0.05);
}

TEST_F(RoutingTaskSnappingTest, TheFirstSearchStartsAtTheRawPosition) {
  routing = navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  routing->setSnappingTask(seen(building.position(0, 1, 2.1)));
  routing->run();
  pump();
  EXPECT_NEAR(lastRoute()->totalDistance(), 75, 0.05);
}

TEST_F(RoutingTaskSnappingTest, SnappingDoesNotReplaceThePositionOfTheTask) {
  const auto task = navigation().snappingTask(building.position(0, 2, 2.2), nullptr);
  task->run();
  pump();
  EXPECT_EQ(routing->point(), building.point("A"));
}

TEST_F(RoutingTaskSnappingTest, DestinationsThatWaitForTheEndOfARunAreNotAppliedBySnapping) {
  routing->updateDestinations({building.point("E")});
  ASSERT_EQ(routing->possibleDestinations(), std::vector<PointPtr>{building.point("E")});
  deliveries().back().update->updateStartPoint(building.position(0, 2, 2));
  routing->updateDestinations({building.point("C")});
  EXPECT_EQ(routing->possibleDestinations(), std::vector<PointPtr>{building.point("E")});
  const auto task = navigation().snappingTask(false, building.position(0, 2, 2.1), nullptr);
  task->run();
  EXPECT_EQ(routing->possibleDestinations(), std::vector<PointPtr>{building.point("E")});
  pump();
  EXPECT_EQ(routing->possibleDestinations(), std::vector<PointPtr>{building.point("C")});
}

TEST_F(RoutingTaskSnappingTest, DirectionsAreMadeForARouteThatSnappingHasBroughtUpToDate) {
  routing->setDirections(true);
  navigation().snappingTask(false, building.position(0, 4, 2.1), nullptr)->run();
  routing->setDirections(false);
  EXPECT_EQ(deliveries().size(), 1U) << "nothing is published for it";
  deliveries().back().update->updateStartPoint(building.position(0, 4, 2));
  pump();
  EXPECT_TRUE(lastRoute()->directions().empty());
}

/// Calls a function in the middle of the next search for a route, on the thread that searches.
class InTheMiddleOfASearch {
 public:
  explicit InTheMiddleOfASearch(std::function<void()> job) {
    KorvaniCommon::setLogThreshold(KorvaniCommon::LogLevel::test);
    KorvaniCommon::setLogSink([job = std::move(job)](auto, auto, std::string_view text) {
      if (text.find("Dijkstra took") != std::string_view::npos) job();
    });
  }
  ~InTheMiddleOfASearch() {
    KorvaniCommon::setLogSink(nullptr);
    KorvaniCommon::setLogThreshold(before_);
  }
  InTheMiddleOfASearch(const InTheMiddleOfASearch&) = delete;
  InTheMiddleOfASearch& operator=(const InTheMiddleOfASearch&) = delete;

 private:
  const KorvaniCommon::LogLevel before_ = KorvaniCommon::logThreshold();
};

TEST_F(RoutingTaskSnappingTest, ARunThatMeetsASnappingTaskAtWorkOnTheRouteFollowsIt) {
  routing = navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  const auto before = deliveries().size();
  int searches = 0;
  int told = 0;
  const InTheMiddleOfASearch meeting([&] {
    if (++searches > 1) return;
    EXPECT_TRUE(routing->running());
    EXPECT_TRUE(routing->run([&] { ++told; }));
    EXPECT_FALSE(routing->run([&] { ++told; })) << "one is enough";
  });
  navigation().snappingTask(false, building.position(0, 2, 2), nullptr)->run();
  EXPECT_EQ(told, 1);
  pump();
  ASSERT_EQ(deliveries().size(), before + 1);
  EXPECT_TRUE(lastRoute());
  EXPECT_FALSE(routing->running());
}

TEST_F(RoutingTaskSnappingTest, ARunThatMeetsASnappingTaskDoesNotFollowOnceItIsStopped) {
  routing = navigation().routingTask(building.point("A"), {building.point("C")}, recorder());
  const auto before = deliveries().size();
  {
    const InTheMiddleOfASearch meeting([&] { routing->run(); });
    navigation().snappingTask(false, building.position(0, 2, 2), nullptr)->run();
  }
  EXPECT_TRUE(routing->running()) << "it is about to";
  navigation().removeTask(routing);
  pump();
  EXPECT_EQ(deliveries().size(), before);
  EXPECT_FALSE(routing->running());
  const std::weak_ptr<RoutingTask> weak = routing;
  routing.reset();
  EXPECT_TRUE(weak.expired());
}

TEST_F(RoutingTaskSnappingTest, APositionThatMeetsASnappingTaskAtWorkOnTheRouteIsDropped) {
  const auto update = deliveries().back().update;
  const InTheMiddleOfASearch meeting(
      [&] { EXPECT_FALSE(update->updateStartPoint(building.point("B"))); });
  navigation().snappingTask(false, building.position(0, 6, -0.2), nullptr)->run();
  pump();
  EXPECT_EQ(deliveries().size(), 1U);
  EXPECT_TRUE(update->updateStartPoint(building.point("B"))) << "and the next one honoured";
}

}  // namespace
}  // namespace KorvaniNavigation
