// What was recorded is replayed, and has to give what the app's own handlers were given.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Json/EngineJson.hpp"
#include "Navigation/Obstacles/DefaultObstacleDenier.hpp"
#include "Recorder/RecorderFixture.hpp"
#include "Support/TextBuilding.hpp"
#include "Trace/Replay.hpp"
#include "Trace/ReplayEvents.hpp"
#include "Trace/TraceReader.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniPlatform::Notification;
using KorvaniPlatform::NotificationCenter;
using KorvaniTest::PointPtr;
using KorvaniTest::TextBuilding;
using KorvaniTools::OrderedJson;

/// A small app: it asks for all there is, and keeps what it is answered as a replay prints it.
class RecorderReplay : public KorvaniTest::RecorderFixture {
 protected:
  RecorderReplay() {
    NotificationCenter::defaultCenter().addObserver(
        observer_, NavigationRoutingTaskDestinationReachedNotification,
        [this](const Notification& notification) {
          keep(KorvaniTools::notificationEvent(0, notification));
        });
  }

  void keep(const OrderedJson& event) {
    if (!replaying_) answers_.push_back(KorvaniTools::jsonText(event));
  }

  RoutingTask::CompletionHandler guided() {
    return [this](auto update, const auto& route, bool finished, const auto& destination) {
      if (update) update_ = std::move(update);
      keep(finished ? KorvaniTools::arrivalEvent(0, destination)
                    : KorvaniTools::routeEvent(0, route));
    };
  }

  std::function<void(CLLocationCoordinate2D)> shown(const char* event) {
    return [this, event](CLLocationCoordinate2D coordinate) {
      keep(KorvaniTools::coordinateEvent(0, event, coordinate));
    };
  }

  std::shared_ptr<RoutingTask> guide(const PointPtr& from, const std::vector<PointPtr>& to,
                                     const std::string& config = "main") {
    auto task = navigation().routingTask(from, to, config, guided());
    task->setDirections(true);
    recording.run(task);
    pump();
    return task;
  }

  void moveTo(const PointPtr& position) {
    recording.updateStartPoint(*update_, position);
    pump();
  }

  void snap(const PointPtr& position) {
    recording.run(navigation().snappingTask(position, shown("snapped")));
    pump();
  }

  void intersect(const PointPtr& position, bool onOriginalGraph) {
    recording.run(std::make_shared<IntersectionTask>(
        bundle(), position,
        [this](const auto& place) { keep(KorvaniTools::intersectionEvent(0, place)); },
        onOriginalGraph));
  }

  /// Does again what the last pair of files says, in a facade as after the start of a process.
  std::vector<std::string> replay() {
    replaying_ = true;
    TearDown();
    const auto files = recording.files().back();
    KorvaniTools::Replay replay(makeGraph(KorvaniTools::readBuilding(files.building)));
    auto stream = KorvaniTools::openTrace(files.trace);
    KorvaniTools::TraceReader reader(stream, files.trace.string());
    std::vector<std::string> events;
    while (const auto line = reader.next()) {
      for (OrderedJson event : replay.carryOut(*line)) {
        event["line"] = 0;
        events.push_back(KorvaniTools::jsonText(event));
      }
    }
    return events;
  }

  /// Replays, and compares answer by answer.
  void expectTheSameAgain() {
    const auto events = replay();
    for (std::size_t i = 0; i < std::min(events.size(), answers_.size()); ++i) {
      ASSERT_EQ(events[i], answers_[i]) << "answer " << i;
    }
    EXPECT_EQ(events.size(), answers_.size());
    EXPECT_TRUE(recording.problems().empty());
  }

  const std::vector<std::string>& answers() const { return answers_; }

 private:
  const std::shared_ptr<void> observer_ = std::make_shared<char>();
  std::vector<std::string> answers_;
  std::shared_ptr<RoutingUpdateTask> update_;
  bool replaying_ = false;
};

/// Two floors with a ring each, so that there are equal ways, and walls to be hidden by.
TextBuilding twoFloors() {
  TextBuilding building(4.0);
  building.addLevel(0, R"(
  ##################
  #A---B---C---D---E
  #|   |   |   |   |
  #F---G---H---I---J
  ########## #######
  #K---L---M---N---O)");
  building.addLevel(1, R"(
   a---b---c---d---e
   |   |       |   |
   f---g---h---i---j)");
  building.connect("H", "M", {.multiplicator = 1.5, .type = "door"});
  building.connect("E", "e",
                   {.distance = 9, .multiplicator = 2, .isBarrierFree = false, .type = "stairs"});
  building.connect("J", "j", {.distance = 9, .multiplicator = 3, .type = "elevator"});
  return building;
}

TEST_F(RecorderReplay, GivesWhatTheAppWasAnsweredOnAWalk) {
  const TextBuilding building = twoFloors();
  const auto at = [&](std::int64_t level, double column, double row) {
    return building.position(level, column, row);
  };
  config().setTargetProximityDistance(4);
  config().setActivateNavigationPathSnapping(true);
  config().setActivateMagneticSnapping(true);
  record(building.graph());
  intersect(at(0, 7, 2.2), true);
  const auto task = guide(at(0, 4, 1.1), {at(1, 4, 1.2), at(0, 3, 5)});
  moveTo(at(0, 6, 1.2));
  intersect(at(0, 8, 1.3), false);
  snap(at(0, 9, 1.4));
  moveTo(at(0, 9, 3.2));
  config().setActivateRouteOptimisation(true);
  moveTo(at(0, 13, 4));
  recording.updateDestinations(task, {at(1, 3, 2)});
  moveTo(at(0, 15, 2));
  snap(at(0, 17, 2.2));
  // From here on snapping decides where the person is.
  for (const auto& position : {at(1, 19, 0), at(1, 12, 2.2), at(1, 3.2, 2)}) {
    snap(position);
    moveTo(position);
  }
  EXPECT_EQ(answers().size(), 16U);
  EXPECT_NE(answers().back().find("notification"), std::string::npos) << "the person arrives";
  expectTheSameAgain();
}

TEST_F(RecorderReplay, GivesWhatChecksWereAnswered) {
  const TextBuilding building = twoFloors();
  record(building.graph());
  const auto strength = navigation().obstacleCheckTask(building.point("F"), shown("checked"));
  const auto credit = std::make_shared<ObstacleCheckTask>(
      bundle(), true, building.point("F"), std::make_shared<DefaultObstacleDenier>(bundle()),
      shown("checked"));
  // Credit is earned in the corridor; then the position jumps through the wall in the south.
  for (int i = 0; i < 18; ++i) {
    const double row = i < 11 ? 3 : 5.4;
    strength->updatePoint(building.position(0, 4 + i * 0.2, row));
    credit->updatePoint(building.position(0, 4 + i * 0.2, row));
    recording.run(strength);
    pump();
    recording.run(credit, Recorder::Denier::byCredit);
    pump();
  }
  ASSERT_EQ(answers().size(), 36U);
  EXPECT_NE(answers()[23], answers()[22]) << "a jump is held back";
  expectTheSameAgain();
}

TEST_F(RecorderReplay, GivesTheSameWithSeveralRoutingsAndConfigurations) {
  const TextBuilding building = twoFloors();
  navigation().addConfig("night");
  (*navigation().navigationConfigs().find("night"))
      ->config()
      .setActivateBarrierFreeNavigation(true);
  record(building.graph());
  const auto first = guide(building.position(0, 4, 1.3), {building.position(1, 5, 0)});
  recording.removeTask(first);
  guide(building.position(0, 4, 1.3), {building.position(1, 5, 0)}, "night");
  moveTo(building.position(0, 8, 3));
  const auto third = guide(building.position(0, 6, 5), {building.position(0, 19, 1)});
  moveTo(building.position(0, 12, 5));
  recording.removeTask(third);
  snap(building.position(0, 12, 5.2));
  recording.cancelAllTasks();
  record(building.graph());
  snap(building.position(0, 12, 3.2));
  guide(building.position(0, 6, 5), {building.position(0, 19, 1)});
  EXPECT_EQ(answers().size(), 8U);
  expectTheSameAgain();
}

TEST_F(RecorderReplay, GivesTheSameInAFlatBuildingWhoseDefaultsHaveChanged) {
  config().setLevelHeight(0);
  config().setCheckDestinationsAgainstOwnWalls(true);
  const TextBuilding building = twoFloors();
  record(building.graph());
  guide(building.position(0, 4, 1.3), {building.position(0, 19, 5)});
  moveTo(building.position(0, 8, 3));
  moveTo(building.position(0, 12, 3.2));
  EXPECT_EQ(answers().size(), 3U);
  expectTheSameAgain();
}

TEST_F(RecorderReplay, GivesTheSameInTheDemoBuilding) {
  const auto building = KorvaniTools::readBuilding(KORVANI_SOURCE_DIR
                                                   "/Examples/Buildings/terminal.building.geojson");
  config().setCheckDestinationsAgainstOwnWalls(true);
  record(makeGraph(building));
  const auto& places = building.places;
  ASSERT_GT(places.size(), 9U);
  const auto pointAt = [&](std::size_t index) {
    const auto& place = places[index % places.size()];
    return KorvaniTest::at(place.coordinate, place.level);
  };
  for (std::size_t i = 0; i < 8; ++i) {
    guide(pointAt(i * 7), {pointAt(i * 5 + 3), pointAt(i * 11 + 1)});
    snap(pointAt(i * 3));
    moveTo(pointAt(i * 3));
    intersect(pointAt(i * 13), false);
  }
  EXPECT_GE(answers().size(), 24U);
  expectTheSameAgain();
}

}  // namespace
}  // namespace KorvaniNavigation
