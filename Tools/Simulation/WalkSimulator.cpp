#include "Simulation/WalkSimulator.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "Navigation/API/Config.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Simulation/Detour.hpp"
#include "Simulation/GroundOffset.hpp"
#include "Simulation/GuidedPerson.hpp"
#include "Simulation/LevelGlitches.hpp"
#include "Simulation/PositionNoise.hpp"
#include "Simulation/Walk.hpp"
#include "Support/InputError.hpp"
#include "Support/RouteSearch.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::Navigation;
using KorvaniNavigation::Route;

constexpr double kMostNoise = 1000;  // metres
/// How many branches are tried until one is found that leads on to the destination.
constexpr std::size_t kBranchesTried = 30;
/// How often somebody who stands where the walk ended goes on to where the engine leads.
constexpr int kFurtherWays = 3;

void refuse(const std::string& option, double found, const std::string& expected) {
  throw InputError(option + ": found " + decimals(found) + ", expected " + expected);
}

void checkRanges(const WalkOptions& options) {
  // Written so that what is not a number is refused as well.
  if (!(options.noise >= 0 && options.noise <= kMostNoise)) {
    refuse("--noise", options.noise, "metres from 0 to 1000");
  }
  if (!(options.speed > 0 && std::isfinite(options.speed))) {
    refuse("--speed", options.speed, "metres per second, more than 0");
  }
  if (!(options.levelGlitches >= 0 && options.levelGlitches <= 1)) {
    refuse("--level-glitches", options.levelGlitches, "a probability from 0 to 1");
  }
}

void checkDuration(double seconds, const WalkOptions& options) {
  if (seconds <= kMostReadings) return;
  throw InputError("--speed: at " + decimals(options.speed) + " m/s the walk takes " +
                   decimals(std::ceil(seconds)) + " s, expected " + decimals(kMostReadings) +
                   " at most");
}

/// The route on the graph; absent when one is there already.
std::optional<Route> wayOf(const RouteAnswer& answer, const Spot& from, const Spot& to) {
  const bool isThere = answer.arrived && (!answer.direct || from.level == to.level);
  if (isThere) return {};
  if (answer.direct || !answer.route) {
    throw NoWalkError("no mapped way found from " + from.name + " to " + to.name);
  }
  return answer.route;
}

Whereabouts placeOf(const Spot& spot) { return {spot.coordinate, spot.level}; }

bool followDetour(const Route& route, const WalkOptions& options, Walk& walk) {
  const bool barrierFree =
      options.barrierFree || Navigation::sharedInstance().config().activateBarrierFreeNavigation();
  auto branches = branchesOff(route, barrierFree, options.seed);
  branches.resize(std::min(branches.size(), kBranchesTried));
  for (const Branch& branch : branches) {
    const Whereabouts& end = branch.places.back();
    // A one-way door may close behind whoever went astray.
    const RouteAnswer back =
        searchRoute({"", end.coordinate, end.level}, {options.to}, options.barrierFree);
    if (back.direct || !back.route) continue;
    walk.follow(route, branch.steps);
    for (const Whereabouts& place : branch.places) walk.goTo(place);
    walk.follow(*back.route);
    return true;
  }
  return false;
}

Walk plannedWalk(const WalkOptions& options) {
  Walk walk(placeOf(options.from), options.speed);
  const RouteAnswer answer = searchRoute(options.from, {options.to}, options.barrierFree);
  const auto route = wayOf(answer, options.from, options.to);
  if (!route) return walk;
  if (!options.detour) {
    walk.follow(*route);
  } else if (!followDetour(*route, options, walk)) {
    throw NoWalkError("no detour: the way from " + options.from.name + " to " + options.to.name +
                      " passes no other one that leads away from it and on to the destination");
  }
  return walk;
}

TracePoint tracePoint(const Spot& spot) {
  return {spot.coordinate.latitude, spot.coordinate.longitude, spot.level};
}

RouteOperation routeOperation(const WalkOptions& options) {
  RouteOperation route;
  route.from = tracePoint(options.from);
  route.to = {tracePoint(options.to)};
  if (options.barrierFree) route.barrierFree = true;
  return route;
}

/// Hands what the positioning system says to the engine, and writes it down.
class Observer {
 public:
  Observer(const Building& building, const WalkOptions& options)
      : noise_(options.noise, options.seed),
        glitches_(building, options.levelGlitches, options.seed),
        operations_{routeOperation(options)},
        person_(routeOperation(options)) {}

  /// A reading of somebody who walks.
  void see(const Whereabouts& place) {
    const GroundOffset error = noise_.next();
    const std::int64_t level = glitches_.reported(place.level);
    report(movedBy(place.coordinate, error), level);
  }

  /// A reading on the right level, with so much of the noise.
  void seeWith(double share, const Whereabouts& place) {
    const GroundOffset error = noise_.next();
    report(movedBy(place.coordinate, {share * error.east, share * error.north}), place.level);
  }

  /// An exact reading.
  void seeExactly(const Whereabouts& place) { report(place.coordinate, place.level); }

  bool arrived() const { return person_.hasArrived(); }
  const std::optional<Route>& route() const { return person_.route(); }
  std::vector<TraceOperation> operations() { return std::move(operations_); }

 private:
  void report(Coordinate coordinate, std::int64_t level) {
    if (arrived()) return;
    const TracePoint point{coordinate.latitude, coordinate.longitude, level};
    operations_.emplace_back(SnapOperation{point, {}});
    operations_.emplace_back(PositionOperation{point});
    person_.moveTo(point);
  }

  PositionNoise noise_;
  LevelGlitches glitches_;
  std::vector<TraceOperation> operations_;
  GuidedPerson person_;
};

void standExactly(Observer& observer, const Whereabouts& place) {
  for (int i = 0; i < kExactReadings; ++i) observer.seeExactly(place);
}

void walkAndStand(Observer& observer, const Walk& walk) {
  for (int second = 1; second < walk.seconds() && !observer.arrived(); ++second) {
    observer.see(walk.at(second));
  }
  for (int i = 1; i <= kFadingReadings; ++i) {
    observer.seeWith(1.0 - static_cast<double>(i) / kFadingReadings, walk.end());
  }
  standExactly(observer, walk.end());
}

/// Goes to where the engine leads now, exactly along its route, and to the last node of that.
void goOn(Observer& observer, Whereabouts& place, const WalkOptions& options) {
  const std::optional<Route> route = observer.route();
  if (!route) return;
  Walk walk(place, options.speed);
  walk.follow(*route);
  checkDuration(walk.seconds(), options);
  for (int second = 1; second < walk.seconds() && !observer.arrived(); ++second) {
    const Whereabouts passed = walk.at(second);
    observer.seeExactly({rounded(passed.coordinate), passed.level});
  }
  place = walk.end();
  standExactly(observer, place);
  standExactly(observer, lastNodeOf(*route).value_or(place));
}

}  // namespace

std::vector<TraceOperation> simulateWalk(const Building& building, const WalkOptions& options) {
  checkRanges(options);
  const Walk walk = plannedWalk(options);
  checkDuration(walk.seconds(), options);
  Observer observer(building, options);
  walkAndStand(observer, walk);
  Whereabouts place = walk.end();
  for (int i = 0; i < kFurtherWays && !observer.arrived(); ++i) {
    goOn(observer, place, options);
  }
  standExactly(observer, placeOf(options.to));
  if (!observer.arrived()) {
    throw NoWalkError("the walk from " + options.from.name + " to " + options.to.name +
                      " does not arrive: at its end the engine still guides");
  }
  return observer.operations();
}

}  // namespace KorvaniTools
