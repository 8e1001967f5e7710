#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Building/Rectangle.hpp"
#include "Drawing/RoomKind.hpp"
#include "Drawing/SceneFrame.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"

namespace KorvaniTools {

/// A stretch of a route on one level, in walking direction.
struct RouteLeg {
  std::int64_t level = 0;
  SceneLine line;  ///< at least two points
};

/// An instruction's arrow.
struct RouteArrow {
  std::int64_t level = 0;
  ScenePoint at;       ///< the arrow's point
  double heading = 0;  ///< where it points, degrees clockwise from north
  std::string kind;    ///< the instruction's name: "left", "bearRight", "forward"
  std::string text;    ///< as a person reads it
  ConnectionSymbol symbol = ConnectionSymbol::path;  ///< what a change of level is made by

  bool changesLevel() const { return kind == "levelUp" || kind == "levelDown"; }
};

/// Where a route leaves a level and where it comes to the next.
struct RouteChange {
  std::int64_t from = 0;
  std::int64_t to = 0;
  ScenePoint leaves;
  ScenePoint arrives;
  ConnectionSymbol symbol = ConnectionSymbol::path;
  std::string type;      ///< as the building file calls the connection; may be empty
  std::string toName;    ///< "to level 2, Upper deck"
  std::string fromName;  ///< "from level 1"

  bool goesUp() const { return to > from; }
};

/// A route's start or destination.
struct RouteEnd {
  std::int64_t level = 0;
  ScenePoint at;
  std::string name;
};

/// A place on the route.
struct RouteSpot {
  std::int64_t level = 0;
  ScenePoint at;
};

/// A route as a drawing shows it: plain values in the frame of the scene, without the engine.
struct DrawnRoute {
  std::vector<RouteLeg> legs;        ///< in walking order
  std::vector<RouteArrow> arrows;    ///< in walking order
  std::vector<RouteChange> changes;  ///< in walking order; those of one connection without a walk
                                     ///< between them are one
  RouteEnd start;
  RouteEnd destination;
  double distance = 0;                      ///< metres
  double travelTime = 0;                    ///< seconds
  bool direct = false;                      ///< a straight line for want of a way
  std::vector<std::string> instructions;    ///< in words, as `routeInstructions` puts them
  std::vector<RouteSpot> instructionSpots;  ///< where each of the instructions applies

  bool touches(std::int64_t level) const;
};

/// How an engine's route is drawn in `frame`, from `start` to `destination`.
DrawnRoute drawnRoute(const KorvaniNavigation::Route& route, const Spot& start,
                      const Spot& destination, const LevelNames& levels, const SceneFrame& frame);

}  // namespace KorvaniTools
