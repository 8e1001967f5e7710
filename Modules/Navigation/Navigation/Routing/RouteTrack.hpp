#pragma once

// Internal. What positions are mapped onto while a route is followed.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Localisation/RegionSearch.hpp"
#include "Navigation/Names.hpp"
#include "Navigation/Routing/RouteGraph.hpp"
#include "Navigation/Routing/RouteNotes.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class KRVNavGraph;
class KRVNavPoint;
class ObstacleDetector;
class RemainingSteps;

/// A place on a route: one of its points, or the foot of a position on one of its steps.
struct TrackPlace {
  IntersectionKind kind;              ///< `node` or `edge`
  std::size_t number;                 ///< of the point, or of the step's start, on the track
  std::shared_ptr<KRVNavPoint> node;  ///< a new one, of no region: the foot, or a copy of the point
  double distance;                    ///< metres from the position to it
  double delta;                       ///< the same in degrees
};

/// What is left of a route as something positions are mapped onto: its points, and the walls of the
/// building on the levels it touches.
///
/// It stands for a small graph that holds nothing else, see `buildRouteGraph`, and gives the same
/// answers. While somebody walks, a route is replaced many times a second, and hardly anybody looks
/// at that graph; so it is built when it is asked for. All that it is made of is noted when the
/// track is made, so it is the graph of that moment, whatever becomes of the building.
///
/// Who has the graph may change it, and looks for his positions among its nodes. So from then on
/// this track's positions are mapped onto it; the next one has a graph of its own.
///
/// Thread safety: any thread at any time; who asks for the graph first builds it, others wait.
class RouteTrack {
 public:
  explicit RouteTrack(std::shared_ptr<const RemainingSteps> steps);

  /// The graph; the same object each time.
  std::shared_ptr<KRVNavGraph> graph() const;

  /// Whether `place` can be asked about that position. It cannot where points of the route stand
  /// for each other in its graph, for positions that are not on Earth, and once somebody has got
  /// the graph; these are mapped onto the graph.
  bool canPlace(const KRVNavPoint& position) const;

  /// The place nearest to a position, as `PositionMapper::intersect` finds it on the graph: a point
  /// in sight, or the foot on the step that begins there. Absent when nothing is in sight.
  std::optional<TrackPlace> place(const KRVNavPoint& position,
                                  const std::weak_ptr<ConfigDependents>& configuration) const;

  /// The place as a place of the graph, whose nodes it refers to.
  std::shared_ptr<Intersection> intersectionAt(const TrackPlace& place) const;

 private:
  /// A point of the track in sight of a position.
  struct Sighted {
    std::size_t number = 0;
    double delta = 0;     ///< degrees
    double distance = 0;  ///< metres
  };

  /// A place that is not made a point yet.
  struct Candidate {
    IntersectionKind kind = IntersectionKind::node;
    std::size_t number = 0;
    CLLocationCoordinate2D coordinate;
    double distance = 0;
  };

  std::size_t pointCount() const;
  const NotedPoint& point(std::size_t number) const;
  void noteNodes() const;
  bool isGraphGivenOut() const;
  bool meetsStartAgain() const;
  bool startIsReplaced() const;
  void noteLevels();
  void noteLevel(const NotedPoint& point, const Regions* regions);
  const RouteLevel* levelFor(std::int64_t level) const;
  template <class Look>
  void forEachOn(std::int64_t level, const Look& look) const;
  std::vector<Sighted> pointsWithin(std::int64_t level, CLLocationCoordinate2D position,
                                    double reach) const;
  std::vector<Sighted> pointsInSight(std::int64_t level, CLLocationCoordinate2D position,
                                     const ObstacleDetector& walls) const;
  void moveToNearerFoot(Candidate& best, const Sighted& start, CLLocationCoordinate2D position,
                        const ObstacleDetector& walls) const;
  std::int64_t identifierInGraph(std::size_t number) const;

  const std::shared_ptr<const RemainingSteps> steps_;
  const std::shared_ptr<const RouteNotes> notes_;
  const std::optional<NotedPoint> start_;  ///< where the person is, once the route was shortened
  std::vector<RouteLevel> levels_;         ///< in the order in which the route comes to them
  mutable std::mutex building_;
  mutable std::shared_ptr<KRVNavGraph> graph_;
  mutable std::vector<std::shared_ptr<KRVNavPoint>> nodes_;  ///< of the graph, one for each point
};

}  // namespace KorvaniNavigation
