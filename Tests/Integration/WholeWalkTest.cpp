#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/LevelNames.hpp"
#include "Support/Maps.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/RouteSearch.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Step;
using KorvaniPlatform::Dictionary;
using KorvaniPlatform::greatCircleDistance;
using KorvaniPlatform::NotificationCenter;
using KorvaniPlatform::Number;

constexpr auto kTerminal = "Examples/Buildings/terminal.building.geojson";

struct Errand {
  const char* file;   ///< below the repository or, when that has none, the maps
  const char* from;   ///< where the person starts
  const char* to;     ///< where they want to go first,
  const char* aside;  ///< where they turn up instead,
  const char* then;   ///< and where they want to go from there
};

void PrintTo(const Errand& errand, std::ostream* out) {
  *out << errand.from << " to " << errand.to;
}

/// Somebody who walks through a building with an app: one position after the other is snapped, and
/// then given to the routing task.
class WholeWalk : public FacadeFixture, public testing::WithParamInterface<Errand> {
 protected:
  void SetUp() override {
    std::filesystem::path file = std::filesystem::path(KORVANI_SOURCE_DIR) / GetParam().file;
    if (!exists(file)) {
      SKIP_WITHOUT_MAPS();
      file = mapFile(GetParam().file);
    }
    config().setCheckDestinationsAgainstOwnWalls(true);
    building_ = KorvaniTools::readBuilding(file);
    KorvaniTools::provideGraph(KorvaniTools::makeGraph(building_));
  }

  PointPtr place(const char* name) const {
    using namespace KorvaniTools;
    const auto spot = PlaceFinder(building_, LevelNames(building_)).find(name);
    return at({spot.coordinate.latitude, spot.coordinate.longitude}, spot.level);
  }

  /// Snaps the position and goes on with it. Every position must be answered once, by both.
  void walkTo(const PointPtr& position) {
    const auto before = deliveries().size();
    const auto task = navigation().snappingTask(position, [&](auto) { ++snapped_; });
    task->run();
    pump();
    ASSERT_EQ(snapped_, ++positions_);
    deliveries().back().update->updateStartPoint(position);
    pump();
    ASSERT_EQ(deliveries().size(), before + 1);
  }

  /// Walks along the route as it is now, until so many metres are left or the person has arrived.
  void walkOn(double untilLeft = 0) {
    const KorvaniNavigation::Route planned = *lastRoute();
    for (const Step& step : planned.steps()) {
      const double length =
          greatCircleDistance(step.start()->coordinate(), step.end()->coordinate());
      for (double way = 1; way < length; way += 2) {
        walkTo(aside(*step.start(), *step.end(), way / length));
        if (deliveries().back().finished) return;
        if (lastRoute() && lastRoute()->remainingDistance() < untilLeft) return;
      }
      walkTo(at(step.end()->coordinate(), step.end()->level()));
      if (deliveries().back().finished) return;
    }
  }

  /// A reading there on the step, up to 40 cm aside.
  PointPtr aside(const KRVNavPoint& from, const KRVNavPoint& to, double part) {
    const auto a = from.coordinate();
    const auto b = to.coordinate();
    const CLLocationCoordinate2D there{a.latitude + (b.latitude - a.latitude) * part,
                                       a.longitude + (b.longitude - a.longitude) * part};
    const auto metres = [&] { return static_cast<double>(random_() % 800) / 1000 - 0.4; };
    const double north = metres();
    return at(moved(there, north, metres()), part < 0.5 ? from.level() : to.level());
  }

  /// Ground metres from the end of the route to a place; negative on another level.
  double routeEndsAt(const PointPtr& place) const {
    const auto& end = *lastRoute()->steps().back().end();
    if (end.level() != place->level()) return -1;
    return greatCircleDistance(end.coordinate(), place->coordinate());
  }

  /// What is announced at the arrival.
  std::vector<KorvaniPlatform::Notification> announcements_;
  std::shared_ptr<int> observer_ = std::make_shared<int>();
  int snapped_ = 0;
  int positions_ = 0;

 private:
  KorvaniTools::Building building_;
  std::mt19937 random_{7};
};

constexpr double kNearEnough = 6;  // metres from a place to the graph

TEST_P(WholeWalk, LeadsThroughDetoursAndChangesOfMindToTheDestination) {
  NotificationCenter::defaultCenter().addObserver(
      observer_, KorvaniNavigation::NavigationRoutingTaskDestinationReachedNotification,
      [&](const auto& notification) { announcements_.push_back(notification); });
  const PointPtr to = place(GetParam().to);
  const PointPtr then = place(GetParam().then);

  const auto task = guide(place(GetParam().from), {to});
  task->setDirections(true);
  ASSERT_TRUE(lastRoute());
  ASSERT_FALSE(task->isDirectLine());
  EXPECT_LT(std::abs(routeEndsAt(to)), kNearEnough);

  const double whole = lastRoute()->remainingDistance();
  ASSERT_NO_FATAL_FAILURE(walkOn(whole * 2 / 3));
  ASSERT_TRUE(lastRoute());
  EXPECT_LT(lastRoute()->remainingDistance(), whole * 2 / 3);
  EXPECT_FALSE(lastRoute()->directions().empty());

  // They turn up elsewhere: a new route to the same destination.
  ASSERT_NO_FATAL_FAILURE(walkTo(place(GetParam().aside)));
  ASSERT_TRUE(lastRoute());
  EXPECT_LT(lastRoute()->steps().front().start()->distanceFrom(*place(GetParam().aside)), 20);
  EXPECT_LT(std::abs(routeEndsAt(to)), kNearEnough);

  // They change their mind while nothing goes on: the next position leads elsewhere.
  task->updateDestinations({then});
  ASSERT_NO_FATAL_FAILURE(walkTo(place(GetParam().aside)));
  ASSERT_FALSE(task->isDirectLine());
  EXPECT_LT(std::abs(routeEndsAt(then)), kNearEnough);

  // And back while a position is being worked on: that one still goes the old way.
  deliveries().back().update->updateStartPoint(place(GetParam().aside));
  ASSERT_TRUE(task->running());
  task->updateDestinations({to});
  pump();
  EXPECT_LT(std::abs(routeEndsAt(then)), kNearEnough);
  ASSERT_NO_FATAL_FAILURE(walkTo(place(GetParam().aside)));
  EXPECT_LT(std::abs(routeEndsAt(to)), kNearEnough);

  ASSERT_NO_FATAL_FAILURE(walkOn());
  ASSERT_TRUE(deliveries().back().finished);
  const PointPtr reached = deliveries().back().destination;
  ASSERT_TRUE(reached);
  EXPECT_EQ(reached->level(), to->level());
  EXPECT_LT(greatCircleDistance(reached->coordinate(), to->coordinate()), kNearEnough);
  EXPECT_FALSE(navigation().activeRoutingTask());
  ASSERT_EQ(announcements_.size(), 1U);
  EXPECT_EQ(announcements_[0].userInfo,
            (Dictionary{{KorvaniNavigation::kNavigationRoutingTaskDestinationReachedLatitude,
                         Number::real(reached->coordinate().latitude)},
                        {KorvaniNavigation::kNavigationRoutingTaskDestinationReachedLongitude,
                         Number::real(reached->coordinate().longitude)},
                        {KorvaniNavigation::kNavigationRoutingTaskDestinationReachedLevel,
                         Number::integer(reached->level())}}));
}

// The one that is never skipped: its building is part of the repository.
TEST(WholeWalkBuildings, TheTerminalIsThere) {
  EXPECT_TRUE(exists(std::filesystem::path(KORVANI_SOURCE_DIR) / kTerminal));
}

INSTANTIATE_TEST_SUITE_P(Terminal, WholeWalk,
                         testing::Values(Errand{kTerminal, "Main entrance", "Gate B4", "Gate A1",
                                                "Gate A2"}));

INSTANTIATE_TEST_SUITE_P(CongressCentre, WholeWalk,
                         testing::Values(Errand{"cch-32c3-graph/cch.building.geojson", "Hall 4",
                                                "Subtitles", "Lounge", "Cloakroom"}));

INSTANTIATE_TEST_SUITE_P(Campus, WholeWalk,
                         testing::Values(Errand{"spb-polytech-imdf/spb.building.geojson",
                                                "Classroom 102", "Classroom 510", "Classroom 205",
                                                "Classroom 111"}));

}  // namespace
}  // namespace KorvaniTest
