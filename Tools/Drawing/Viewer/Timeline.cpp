#include "Drawing/Viewer/Timeline.hpp"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <set>
#include <type_traits>
#include <utility>
#include <variant>

#include "Building/BuildingGraph.hpp"
#include "Drawing/Viewer/ReplayedRoute.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Support/LevelNames.hpp"
#include "Support/RouteSearch.hpp"
#include "Trace/Replay.hpp"
#include "Trace/TraceReader.hpp"

namespace KorvaniTools {

using KorvaniNavigation::Navigation;
using KorvaniNavigation::Route;

namespace {

const char* nameOf(const ConfigOperation&) { return "config"; }
const char* nameOf(const IntersectOperation&) { return "intersect"; }
const char* nameOf(const RouteOperation&) { return "route"; }
const char* nameOf(const PositionOperation&) { return "position"; }
const char* nameOf(const DestinationsOperation&) { return "destinations"; }
const char* nameOf(const SnapOperation&) { return "snap"; }
const char* nameOf(const CheckOperation&) { return "check"; }
const char* nameOf(const CancelOperation&) { return "cancel"; }

/// The position that the person is measured at, if the line says one.
std::optional<TracePoint> positionOf(const TraceOperation& operation) {
  return std::visit(
      [](const auto& given) -> std::optional<TracePoint> {
        using Operation = std::decay_t<decltype(given)>;
        if constexpr (std::is_same_v<Operation, RouteOperation>) {
          return given.from;
        } else if constexpr (std::is_same_v<Operation, PositionOperation> ||
                             std::is_same_v<Operation, SnapOperation> ||
                             std::is_same_v<Operation, CheckOperation> ||
                             std::is_same_v<Operation, IntersectOperation>) {
          return given.at;
        } else {
          return {};
        }
      },
      operation);
}

bool isSame(const TracePoint& a, const TracePoint& b) {
  return a.latitude == b.latitude && a.longitude == b.longitude && a.level == b.level;
}

/// Says in which second a line falls: each position begins one, and what is asked about the same
/// position is asked at once. What has been asked already begins the next.
class SecondHand {
 public:
  /// The second of an operation about `position`.
  /// @param sameReading whether it is known to be about the same reading as the one before
  std::int64_t at(const TraceOperation& operation, const TracePoint& position, bool sameReading) {
    const bool known = sameReading || (position_ && isSame(position, *position_));
    if (!known || asked_.contains(operation.index())) {
      if (position_) ++second_;
      asked_.clear();
      position_ = position;
    }
    asked_.insert(operation.index());
    return second_;
  }

 private:
  std::int64_t second_ = 0;
  std::optional<TracePoint> position_;
  std::set<std::size_t> asked_;
};

std::optional<TimelinePoint> pointOf(const OrderedJson& event, std::int64_t level) {
  if (!event["lat"].is_number() || !event["lon"].is_number()) return {};
  return timelinePoint(event["lat"], event["lon"], level);
}

/// Whether a route is the rest of another, joined from somewhere beside it perhaps.
bool leadsAlong(const TimelineRoute& whole, const Route& rest) {
  const std::vector<TimelinePoint> points = pointsAlong(rest);
  const std::size_t shared = points.size() - 1;
  return shared < whole.points.size() &&
         std::equal(points.rbegin(), points.rend() - 1, whole.points.rbegin());
}

/// The spot, at `instead` when it is nowhere on earth.
Spot onEarth(Spot spot, const TimelinePoint& instead) {
  if (timelinePoint(spot.coordinate.latitude, spot.coordinate.longitude, spot.level)) return spot;
  return {std::move(spot.name), instead.coordinate, instead.level};
}

class TimelineMaker {
 public:
  explicit TimelineMaker(const Building& building)
      : building_(building), levels_(building), replay_(makeGraph(building)) {
    timeline_.levels = levels_;
  }

  void carryOut(const TraceLine& line) {
    now_.line = line.number;
    now_.operation = std::visit([](const auto& given) { return nameOf(given); }, line.operation);
    now_.denied = now_.rerouted = now_.arrived = false;
    now_.error.clear();
    if (const auto position = positionOf(line.operation)) takePosition(line.operation, *position);
    const auto events = replay_.carryOut(line);
    if (!refused(events)) takeDestinations(line.operation);
    for (const OrderedJson& event : events) take(event);
    timeline_.moments.push_back(now_);
  }

  Timeline take() { return std::move(timeline_); }

 private:
  void takePosition(const TraceOperation& operation, const TracePoint& position) {
    given_ = position;
    const std::int64_t before = now_.second;
    // Hosts go on with what a check has left of a reading.
    now_.second = secondHand_.at(operation, position, answer_ && isSame(position, *answer_));
    if (now_.raw && now_.second == before) return;
    now_.raw = timelinePoint(position.latitude, position.longitude, position.level);
    now_.snapped.reset();
    now_.checked.reset();
    answer_.reset();
  }

  static bool refused(const Replay::Events& events) {
    return !events.empty() && events.front()["event"] == "error";
  }

  void takeDestinations(const TraceOperation& operation) {
    if (const auto* route = std::get_if<RouteOperation>(&operation)) {
      endRoute();
      start_ = namedSpot(route->from, "the start", building_);
      destinations_ = namedDestinations(route->to, building_);
    } else if (const auto* changed = std::get_if<DestinationsOperation>(&operation)) {
      // They may be too near to the present ones to count, which later routes show.
      for (Spot& spot : namedDestinations(changed->to, building_)) {
        destinations_.push_back(std::move(spot));
      }
    } else if (std::holds_alternative<CancelOperation>(operation)) {
      endRoute();
    }
  }

  void take(const OrderedJson& event) {
    const auto& name = event["event"].get_ref<const std::string&>();
    if (name == "route") takeRoute(event);
    if (name == "snapped") now_.snapped = pointOf(event, given_.level);
    if (name == "checked") takeCheck(event);
    if (name == "error") now_.error = event["message"];
  }

  void takeCheck(const OrderedJson& event) {
    now_.checked = pointOf(event, given_.level);
    if (now_.checked) {
      const Coordinate held = now_.checked->coordinate;
      answer_ = TracePoint{held.latitude, held.longitude, given_.level};
    }
    now_.denied = event["lat"] != given_.latitude || event["lon"] != given_.longitude;
  }

  void takeRoute(const OrderedJson& event) {
    if (event["finished"]) return arrive();
    const auto route = replayedRoute(event["route"]);
    if (!route) return endRoute();
    if (!now_.route || !leadsAlong(timeline_.routes[*now_.route], *route)) begin(*route);
    const TimelineRoute& whole = timeline_.routes[*now_.route];
    const auto left = routeInstructions(*route, levels_, whole.end.name);
    now_.ahead = pointsAlong(*route);
    now_.remaining = route->remainingDistance();
    now_.told = left.empty() ? "" : left.front().text;
    now_.instruction.reset();
    if (!left.empty() && !whole.instructions.empty()) {
      now_.instruction = instructionReached(whole.instructions, left);
    }
  }

  void begin(const Route& route) {
    TimelineRoute whole;
    whole.found = route;
    whole.points = pointsAlong(route);
    const TimelinePoint& end = whole.points.back();
    whole.start = onEarth(start_, whole.points.front());
    whole.end =
        onEarth(destinations_[destinationAt(end.coordinate, end.level, destinations_)], end);
    whole.instructions = routeInstructions(route, levels_, whole.end.name);
    whole.distance = route.totalDistance();
    const auto task = Navigation::sharedInstance().activeRoutingTask();
    whole.direct = task != nullptr && task->isDirectLine();
    now_.rerouted = now_.route.has_value();
    now_.route = timeline_.routes.size();
    timeline_.routes.push_back(std::move(whole));
  }

  void arrive() {
    now_.arrived = true;
    const std::string destination =
        now_.route ? timeline_.routes[*now_.route].end.name : destinations_.front().name;
    endRoute();
    now_.told = "you have reached " + destination;
  }

  void endRoute() {
    now_.route.reset();
    now_.ahead.clear();
    now_.told.clear();
    now_.instruction.reset();
    now_.remaining = 0;
  }

  const Building& building_;
  const LevelNames levels_;
  Replay replay_;
  SecondHand secondHand_;
  Timeline timeline_;
  Moment now_;
  TracePoint given_;                  ///< the position of the line
  std::optional<TracePoint> answer_;  ///< what the check of this second has let through
  Spot start_;                        ///< where the present routing began
  std::vector<Spot> destinations_;    ///< all that the present routing may lead to
};

}  // namespace

Timeline makeTimeline(const Building& building, std::istream& trace, const std::string& file) {
  TraceReader reader(trace, file);
  TimelineMaker maker(building);
  while (const auto line = reader.next()) maker.carryOut(*line);
  return maker.take();
}

Timeline makeTimeline(const Building& building, const std::filesystem::path& path) {
  std::ifstream trace = openTrace(path);
  return makeTimeline(building, trace, path.string());
}

}  // namespace KorvaniTools
