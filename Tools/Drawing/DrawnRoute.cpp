#include "Drawing/DrawnRoute.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Routing/Step.hpp"
#include "Support/ConnectionWords.hpp"
#include "Support/RouteText.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::Directions;
using KorvaniNavigation::DirectionsArrow;
using KorvaniNavigation::DirectionsType;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;

/// Sorts the steps of a route into what is walked and what changes the level.
class StepSorter {
 public:
  StepSorter(const SceneFrame& frame, const LevelNames& levels, DrawnRoute& route)
      : frame_(frame), levels_(levels), route_(route) {}

  void add(const Step& step) {
    if (step.levelChange()) {
      addChange(step);
    } else {
      addWalk(step);
    }
  }

 private:
  ScenePoint at(const KRVNavPoint& point) const { return frame_.at(point.coordinate()); }

  void addWalk(const Step& step) {
    if (!walking_) route_.legs.push_back({step.start()->level(), {at(*step.start())}});
    route_.legs.back().line.push_back(at(*step.end()));
    walking_ = true;
  }

  /// Whether the step goes on with the change before it, so that one stays where one is.
  bool continuesChange(const Step& step) const {
    if (walking_ || route_.changes.empty()) return false;
    const RouteChange& last = route_.changes.back();
    const bool up = step.end()->level() > step.start()->level();
    return last.type == step.neighborType() && last.goesUp() == up;
  }

  void addChange(const Step& step) {
    if (!continuesChange(step)) {
      RouteChange change;
      change.from = step.start()->level();
      change.fromName = "from level " + levels_.number(change.from);
      change.leaves = at(*step.start());
      change.type = step.neighborType();
      change.symbol = connectionSymbolOf(change.type);
      route_.changes.push_back(std::move(change));
    }
    RouteChange& change = route_.changes.back();
    change.to = step.end()->level();
    change.arrives = at(*step.end());
    change.toName = "to " + levels_.words(change.to);
    walking_ = false;
  }

  const SceneFrame& frame_;
  const LevelNames& levels_;
  DrawnRoute& route_;
  bool walking_ = false;
};

std::string arrowWords(const Directions& directions, const LevelNames& levels) {
  const std::string type = directions.levelChangeTypeName().value_or("");
  const std::string level = levels.words(directions.arrow()->level);
  switch (directions.type()) {
    case DirectionsType::levelUp:
      return levelChangeWords(type, true, level);
    case DirectionsType::levelDown:
      return levelChangeWords(type, false, level);
    case DirectionsType::forward:
      return "go straight on for " + metres(directions.distance());
    default:
      return turnWords(directions.type());
  }
}

void addArrows(const Route& route, const LevelNames& levels, const SceneFrame& frame,
               std::vector<RouteArrow>& arrows) {
  for (const Directions& directions : route.directions()) {
    const std::optional<DirectionsArrow>& arrow = directions.arrow();
    if (!arrow) continue;
    arrows.push_back({arrow->level, frame.at(arrow->peak),
                      std::isfinite(arrow->heading) ? arrow->heading : 0,
                      std::string(nameOf(directions.type())), arrowWords(directions, levels),
                      connectionSymbolOf(directions.levelChangeTypeName().value_or(""))});
  }
}

}  // namespace

bool DrawnRoute::touches(std::int64_t level) const {
  const auto onLevel = [level](const auto& part) { return part.level == level; };
  const auto joins = [level](const RouteChange& change) {
    return change.from == level || change.to == level;
  };
  return start.level == level || destination.level == level ||
         std::any_of(legs.begin(), legs.end(), onLevel) ||
         std::any_of(changes.begin(), changes.end(), joins);
}

DrawnRoute drawnRoute(const Route& route, const Spot& start, const Spot& destination,
                      const LevelNames& levels, const SceneFrame& frame) {
  DrawnRoute drawn;
  StepSorter sorter(frame, levels, drawn);
  for (const Step& step : route.steps()) sorter.add(step);
  addArrows(route, levels, frame, drawn.arrows);
  drawn.start = {start.level, frame.at(start.coordinate), start.name};
  drawn.destination = {destination.level, frame.at(destination.coordinate), destination.name};
  drawn.distance = route.totalDistance();
  drawn.travelTime = route.travelTime();
  for (const Instruction& instruction : routeInstructions(route, levels, destination.name)) {
    drawn.instructions.push_back(instruction.text);
    drawn.instructionSpots.push_back({instruction.level, frame.at(instruction.at)});
  }
  return drawn;
}

}  // namespace KorvaniTools
