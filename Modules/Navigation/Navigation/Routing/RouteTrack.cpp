#include "Navigation/Routing/RouteTrack.hpp"

#include <algorithm>
#include <limits>
#include <utility>

#include "Navigation/Graph/GraphSource.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/EdgeFoot.hpp"
#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/NodeTree.hpp"
#include "Navigation/Localisation/VisibleNodes.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::greatCircleDistance;

namespace {

constexpr double kAnywhere = std::numeric_limits<double>::infinity();

/// Points near a position, where the way does not twist: room for so many is made at once.
constexpr std::size_t kFewPoints = 16;

std::optional<NotedPoint> shortenedStart(const RemainingSteps& steps) {
  if (!steps.isShortened()) return std::nullopt;
  return NotedPoint(*steps.view()[0].start());
}

}  // namespace

RouteTrack::RouteTrack(std::shared_ptr<const RemainingSteps> steps)
    : steps_(std::move(steps)),
      notes_(RouteNotes::of(*steps_->computed())),
      start_(shortenedStart(*steps_)) {
  noteLevels();
}

std::size_t RouteTrack::pointCount() const { return notes_->placeCount() - steps_->gone(); }

const NotedPoint& RouteTrack::point(std::size_t number) const {
  return number == 0 && start_ ? *start_ : notes_->at(steps_->gone() + number);
}

/// Calls `look(number, coordinate)` for each point on the level, in walking order.
template <class Look>
void RouteTrack::forEachOn(std::int64_t level, const Look& look) const {
  const std::size_t gone = steps_->gone();
  if (start_ && start_->level == level && !startIsReplaced()) look(0, start_->coordinate);
  const std::size_t first = start_ ? gone + 1 : gone;
  const CLLocationCoordinate2D* const coordinates = notes_->coordinates().data();
  for (const RouteNotes::Flight& flight : notes_->flights()) {
    if (flight.level != level) continue;
    for (std::size_t place = std::max(first, flight.first); place < flight.end; ++place) {
      look(place - gone, coordinates[place]);
    }
  }
}

/// The levels in the order in which the route comes to them, each with the walls around the point
/// where it does.
void RouteTrack::noteLevels() {
  const auto building = graphSource().graph();
  const Regions* const regions = building ? &std::as_const(*building).regions() : nullptr;
  levels_.reserve(notes_->flights().size() + 1);
  if (start_) noteLevel(*start_, regions);
  const std::size_t first = steps_->gone() + (start_ ? 1 : 0);
  for (const RouteNotes::Flight& flight : notes_->flights()) {
    const std::size_t place = std::max(first, flight.first);
    if (place < flight.end) noteLevel(notes_->at(place), regions);
  }
}

void RouteTrack::noteLevel(const NotedPoint& point, const Regions* regions) {
  const bool isKnown = std::any_of(levels_.begin(), levels_.end(), [&](const RouteLevel& level) {
    return level.level == point.level;
  });
  if (isKnown) return;
  const auto region = regions ? regionFor(*regions, point.coordinate, point.level) : nullptr;
  levels_.push_back(
      {point.level, region ? std::as_const(*region).obstacles() : KRVNavRegion::Obstacles()});
}

std::shared_ptr<KRVNavGraph> RouteTrack::graph() const {
  const std::lock_guard lock(building_);
  if (graph_) return graph_;
  const StepsView steps = steps_->view();
  std::vector<NotedPoint> ends;
  ends.reserve(2 * steps.size());
  for (std::size_t i = 0; i < steps.size(); ++i) {
    ends.push_back(point(i));
    ends.push_back(notes_->endOfStep(steps_->gone() + i));
  }
  graph_ = buildRouteGraph(steps, ends, levels_);
  noteNodes();
  return graph_;
}

/// Which nodes the points have become, while nobody else knows the graph: later some may be gone.
/// Where a step is missing, a point can be none; no position is placed there.
void RouteTrack::noteNodes() const {
  nodes_.reserve(pointCount());
  for (std::size_t number = 0; number < pointCount(); ++number) {
    nodes_.push_back(std::as_const(*graph_).nodeWithIdentifier(identifierInGraph(number)));
  }
}

bool RouteTrack::isGraphGivenOut() const {
  const std::lock_guard lock(building_);
  return graph_ != nullptr;
}

/// Whether the person stands at the end of the first step, as a copy of that point: the graph then
/// has the point in its place, with an edge to itself onto which nothing can be put.
bool RouteTrack::startIsReplaced() const {
  return start_ && start_->hasIdentifier() && pointCount() > 1 &&
         point(1).identifier == start_->identifier;
}

/// Whether the person stands at a point that the route comes to later, or comes back to.
bool RouteTrack::meetsStartAgain() const {
  if (!start_ || !start_->hasIdentifier()) return false;
  if (startIsReplaced()) return point(1).level != start_->level;
  for (std::size_t number = 2; number < pointCount(); ++number) {
    if (point(number).identifier == start_->identifier) return true;
  }
  return false;
}

bool RouteTrack::canPlace(const KRVNavPoint& position) const {
  return !isGraphGivenOut() && NodeTree::isOrdinary(position.coordinate()) && notes_->isChain() &&
         (!start_ || NodeTree::isOrdinary(start_->coordinate)) && !meetsStartAgain();
}

/// The position's own level, else the nearest one; of equally near ones the first.
const RouteLevel* RouteTrack::levelFor(std::int64_t level) const {
  const auto nearest = std::min_element(
      levels_.begin(), levels_.end(), [level](const RouteLevel& a, const RouteLevel& b) {
        return levelGap(level, a.level) < levelGap(level, b.level);
      });
  return nearest == levels_.end() ? nullptr : &*nearest;
}

/// Nearest first, of equally near ones the first on the route.
std::vector<RouteTrack::Sighted> RouteTrack::pointsWithin(std::int64_t level,
                                                          CLLocationCoordinate2D position,
                                                          double reach) const {
  std::vector<Sighted> points;
  points.reserve(kFewPoints);
  forEachOn(level, [&](std::size_t number, CLLocationCoordinate2D coordinate) {
    const double delta = degreeDistance(position, coordinate);
    if (delta <= reach) points.push_back({number, delta});
  });
  std::sort(points.begin(), points.end(), [](const Sighted& a, const Sighted& b) {
    return a.delta < b.delta || (a.delta == b.delta && a.number < b.number);
  });
  return points;
}

/// Nearest first in metres. Mostly the nearest one is in sight, so that few others come into
/// question; where it is not, all do.
std::vector<RouteTrack::Sighted> RouteTrack::pointsInSight(std::int64_t level,
                                                           CLLocationCoordinate2D position,
                                                           const ObstacleDetector& walls) const {
  double delta = kAnywhere;
  CLLocationCoordinate2D nearest;
  forEachOn(level, [&](std::size_t, CLLocationCoordinate2D coordinate) {
    const double here = degreeDistance(position, coordinate);
    if (here >= delta) return;
    delta = here;
    nearest = coordinate;
  });
  const bool isHidden = walls.isAnyBarrierInBetween(position, nearest);
  double reach = isHidden ? kAnywhere : kVisibleNodeReach * delta;
  std::vector<Sighted> visible;
  visible.reserve(kFewPoints);
  for (Sighted point : pointsWithin(level, position, reach)) {
    if (point.delta > reach) break;
    const CLLocationCoordinate2D coordinate = this->point(point.number).coordinate;
    if (walls.isAnyBarrierInBetween(position, coordinate)) continue;
    if (visible.empty()) reach = kVisibleNodeReach * point.delta;
    point.distance = greatCircleDistance(coordinate, position);
    visible.push_back(point);
  }
  std::stable_sort(visible.begin(), visible.end(),
                   [](const Sighted& a, const Sighted& b) { return a.distance < b.distance; });
  return visible;
}

/// Puts the position onto the step that starts at that point, if that is nearer than `best`.
void RouteTrack::moveToNearerFoot(Candidate& best, const Sighted& start,
                                  CLLocationCoordinate2D position,
                                  const ObstacleDetector& walls) const {
  if (start.number + 1 == pointCount()) return;
  const NotedPoint& from = point(start.number);
  const NotedPoint& to = point(start.number + 1);
  if (from.level != to.level) return;
  if (leadsElsewhere(position, from.coordinate, to.coordinate)) return;
  if (isPastNearEnd(start.distance, greatCircleDistance(to.coordinate, position),
                    steps_->view()[start.number].distance())) {
    return;
  }
  const auto foot =
      footBetween(MapPlace(from.coordinate), MapPlace(to.coordinate), MapPlace(position));
  if (!foot) return;
  const double distance = greatCircleDistance(foot->coordinate, position);
  if (!(distance < best.distance)) return;
  if (walls.isAnyBarrierInBetween(foot->coordinate, position)) return;
  best = {IntersectionKind::edge, start.number, foot->coordinate, distance};
}

std::optional<TrackPlace> RouteTrack::place(
    const KRVNavPoint& position, const std::weak_ptr<ConfigDependents>& configuration) const {
  const RouteLevel* const level = levelFor(position.level());
  if (!level) return std::nullopt;
  const ObstacleDetector walls(level->obstacles, configuration);
  const CLLocationCoordinate2D coordinate = position.coordinate();
  const auto points = pointsInSight(level->level, coordinate, walls);
  if (points.empty()) return std::nullopt;
  const Sighted& nearest = points.front();
  Candidate best{IntersectionKind::node, nearest.number, point(nearest.number).coordinate,
                 nearest.distance};
  for (const Sighted& start : points) moveToNearerFoot(best, start, coordinate, walls);
  const bool isNode = best.kind == IntersectionKind::node;
  const auto node = isNode ? std::make_shared<KRVNavPoint>(best.coordinate, level->level,
                                                           identifierInGraph(best.number))
                           : std::make_shared<KRVNavPoint>(best.coordinate, level->level);
  const double delta = isNode ? nearest.delta : degreeDistance(best.coordinate, coordinate);
  return TrackPlace{best.kind, best.number, node, best.distance, delta};
}

std::int64_t RouteTrack::identifierInGraph(std::size_t number) const {
  if (point(number).hasIdentifier()) return point(number).identifier;
  std::int64_t identifier = kFirstOwnIdentifier;
  for (std::size_t earlier = 0; earlier < number; ++earlier) {
    if (!point(earlier).hasIdentifier()) --identifier;
  }
  return identifier;
}

std::shared_ptr<Intersection> RouteTrack::intersectionAt(const TrackPlace& place) const {
  graph();
  const auto& start = nodes_[place.number];
  if (place.kind == IntersectionKind::node) {
    return std::make_shared<SingleNodeIntersection>(start, place.distance, place.delta);
  }
  return std::make_shared<EdgeIntersection>(place.delta, place.distance, place.node, start,
                                            nodes_[place.number + 1]);
}

}  // namespace KorvaniNavigation
