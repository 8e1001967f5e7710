#include "Peers/AssembledRoutes.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Buildings/PeerData.hpp"
#include "Common/KorvaniCommonHelpers.hpp"
#include "Peers/Measures.hpp"

namespace KorvaniBenchmarks {

namespace {

constexpr std::size_t kNodesPerDestination = 4;

AssembledStep plainStretch(const LevelPlace& start, const LevelPlace& end) {
  return {start, end, pointDistance(start.coordinate, end.coordinate), 1.0, 0};
}

/// The nearest destination: on the same level if there is one.
const LevelPlace& nearestTo(const LevelPlace& place, const std::vector<LevelPlace>& destinations) {
  const auto nearer = [&](const LevelPlace& a, const LevelPlace& b) {
    if ((a.level == place.level) != (b.level == place.level)) return a.level == place.level;
    return KorvaniPlatform::greatCircleDistance(place.coordinate, a.coordinate) <
           KorvaniPlatform::greatCircleDistance(place.coordinate, b.coordinate);
  };
  return *std::min_element(destinations.begin(), destinations.end(), nearer);
}

PathQuery queryFrom(const BoostMapping& mapping, const MappedPlace& start) {
  PathQuery query;
  if (!start.other) {
    query.starts.push_back({start.node, start.distance});
    return query;
  }
  for (const std::uint32_t end : {start.node, *start.other}) {
    query.starts.push_back({end, KorvaniPlatform::greatCircleDistance(
                                     mapping.placeOf(end).coordinate, start.coordinate)});
  }
  return query;
}

bool runsBack(const AssembledStep& last, const AssembledStep& next) {
  if (last.start.level != last.end.level) return false;
  const double turned = std::remainder(last.heading - 180.0, 360.0);
  return std::abs(turned - std::remainder(next.heading, 360.0)) <= 1.0;
}

double headingOf(const AssembledStep& step) {
  return KorvaniCommon::initialBearing(step.start.coordinate, step.end.coordinate);
}

void addStep(AssembledRoute& route, AssembledStep step) {
  step.heading = headingOf(step);
  if (!route.steps.empty() && runsBack(route.steps.back(), step)) {
    AssembledStep& last = route.steps.back();
    const double multiplicator = step.multiplicator;
    last = plainStretch(last.start, step.end);
    last.multiplicator = multiplicator;
    last.heading = headingOf(last);
  } else {
    route.steps.push_back(step);
  }
}

void addUp(AssembledRoute& route) {
  constexpr double kSpeed = 1.5;
  double weighted = 0;
  for (const AssembledStep& step : route.steps) {
    route.distance += step.distance;
    weighted += step.multiplicator * step.distance;
  }
  route.time = weighted / kSpeed;
}

void addTurns(AssembledRoute& route) {
  constexpr double kStraight = 20.0;
  double walked = 0;
  double reference = route.steps.empty() ? 0 : route.steps.front().heading;
  for (const AssembledStep& step : route.steps) {
    const double turn = std::remainder(step.heading - reference, 360.0);
    const std::int64_t levels = step.end.level - step.start.level;
    if (std::abs(turn) > kStraight || levels != 0) {
      route.turns.push_back({step.start, walked, turn, levels});
      walked = 0;
      reference = step.heading;
    }
    walked += step.distance;
  }
  if (!route.steps.empty()) route.turns.push_back({route.steps.back().end, walked, 0, 0});
}

PlanePoint onPlane(const LevelPlace& place) {
  return KorvaniPlatform::MKMapPointForCoordinate(place.coordinate);
}

/// Whether somebody may walk past the corner between two stretches, straight over that many metres.
bool mayCut(const AssembledStep& step, const AssembledStep& next, double length,
            const BoostWalls& walls) {
  constexpr double kLongest = 20.0;
  constexpr double kLeastTurn = 20.0;
  if (step.start.level != next.end.level || length > kLongest) return false;
  const Coordinate corner = next.start.coordinate;
  const double turn = KorvaniCommon::KorvaniCommonHelpers::clockwiseAngleBetweenLines(
      step.start.coordinate, corner, corner, next.end.coordinate);
  return std::abs(turn) >= kLeastTurn && !walls.meet({onPlane(step.start), onPlane(next.end)});
}

/// From the end to the beginning, as the engine does it, since the order decides.
std::vector<AssembledStep> cutCorners(std::vector<AssembledStep> stretches,
                                      const BoostWalls& walls) {
  std::reverse(stretches.begin(), stretches.end());
  std::vector<AssembledStep> backwards;
  for (const AssembledStep& step : stretches) {
    if (!backwards.empty()) {
      AssembledStep& next = backwards.back();
      const double length =
          KorvaniPlatform::greatCircleDistance(step.start.coordinate, next.end.coordinate);
      if (mayCut(step, next, length, walls)) {
        next = {step.start, next.end, length, step.multiplicator, 0};
        continue;
      }
    }
    backwards.push_back(step);
  }
  std::reverse(backwards.begin(), backwards.end());
  return backwards;
}

}  // namespace

AssembledRoutes::AssembledRoutes(const PlainBuilding& building)
    : mapping_(building), paths_(arcsOf(building, false)) {}

std::optional<AssembledRoute> AssembledRoutes::find(const LevelPlace& position,
                                                    const std::vector<LevelPlace>& destinations) {
  const auto start = mapping_.map(position);
  if (!start) return std::nullopt;
  PathQuery query = queryFrom(mapping_, *start);
  for (const LevelPlace& destination : destinations) {
    const auto near = mapping_.nodesNear(destination, kNodesPerDestination);
    query.targets.insert(query.targets.end(), near.begin(), near.end());
  }
  const FoundWay way = paths_.find(query);
  if (way.nodes.size() < 2) return std::nullopt;

  std::vector<AssembledStep> stretches = stretchesAlong(way.nodes);
  if (start->other) {
    const LevelPlace foot{start->coordinate, position.level};
    stretches.insert(stretches.begin(), plainStretch(foot, stretches.front().start));
  }
  const std::int64_t wallLevel = addEnd(stretches, way.nodes.back(), position.level, destinations);
  AssembledRoute route;
  for (const AssembledStep& stretch :
       cutCorners(std::move(stretches), mapping_.level(wallLevel).walls())) {
    addStep(route, stretch);
  }
  addUp(route);
  addTurns(route);
  return route;
}

std::vector<AssembledStep> AssembledRoutes::stretchesAlong(
    const std::vector<std::uint32_t>& nodes) const {
  std::vector<AssembledStep> stretches;
  for (std::size_t i = 0; i + 1 < nodes.size(); ++i) {
    for (const BoostMapping::Way& way : mapping_.waysOf(nodes[i])) {
      if (way.to != nodes[i + 1]) continue;
      stretches.push_back({mapping_.placeOf(nodes[i]), mapping_.placeOf(way.to), way.distance,
                           way.multiplicator, 0});
      break;
    }
  }
  return stretches;
}

std::int64_t AssembledRoutes::addEnd(std::vector<AssembledStep>& stretches, std::uint32_t last,
                                     std::int64_t startLevel,
                                     const std::vector<LevelPlace>& destinations) const {
  const LevelPlace& via = mapping_.placeOf(last);
  const LevelPlace& destination = nearestTo(via, destinations);
  bool usedOwnWalls = false;
  const auto end =
      mapping_.mapOnto(last, destination, mapping_.level(startLevel).walls(), usedOwnWalls);
  if (!end) {
    stretches.push_back(plainStretch(via, {destination.coordinate, via.level}));
  } else if (end->other) {
    stretches.push_back(plainStretch(via, {end->coordinate, via.level}));
  }
  return usedOwnWalls ? destination.level : startLevel;
}

}  // namespace KorvaniBenchmarks
