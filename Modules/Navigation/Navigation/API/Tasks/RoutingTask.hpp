#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Common/Guarded.hpp"
#include "Navigation/API/Tasks/Tasks/Task.hpp"
#include "Navigation/Names.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class DijkstraImproved;
class Intersection;
class IntersectionTask;
class KRVNavGraph;
class KRVNavPoint;
class RouteTrack;
class RoutingUpdateTask;
class SearchTimeLimit;
class SnappingTask;

/// Computes the route from a person's position to the cheapest of several destinations, and
/// keeps it current while the person walks.
///
/// Made by the facade, which keeps it as the active routing task when its configuration is the
/// main one:
///
///     auto task = navigation.routingTask(position, {gate}, [](auto update, auto route,
///                                                             bool finished, auto destination) {
///       if (finished) return showArrival(destination);
///       show(route);
///       feedPositionsTo(update);   // update->updateStartPoint(point), as often as you like
///     });
///     task->setDirections(true);
///     task->run();
///
/// Each run either shortens the current route to the new position, when the person is still on
/// it, or searches a new one. The handler then gets a handle for further positions, the route,
/// false, and no destination. When the rest of the route is shorter than the configuration's
/// `targetProximityDistance`, it gets (none, none, true, destination) instead: this is the last
/// call, and `NavigationRoutingTaskDestinationReachedNotification` follows.
///
/// The route is absent when none could be computed (no graph, or a position that sees nothing of
/// the graph) and there was none before. When no way exists on the graph, the route is one
/// straight line to the nearest destination, and `isDirectLine()` is true. A search that takes
/// longer than ten seconds while an older route exists is given up, and the older one stays.
///
/// A host that snaps positions runs a `SnappingTask` for each of them. While this task is the
/// active one, they become its `snappingTask` and keep its route current between two
/// `updateStartPoint`; whether the person is still on the route, and where a new one starts, is
/// then decided by the raw position.
///
/// Threads: all public members may be called from any thread, also from inside the handler. The
/// work is done on the global queue; handler and notification come on the main thread.
/// Ownership: the facade keeps the task from its first run until the destination is reached, or
/// until `Navigation::removeTask`, which is how a host stops guiding. A host must not capture the
/// task strongly in the task's own handler.
class KORVANI_API RoutingTask : public Task {
 public:
  using CompletionHandler =
      std::function<void(std::shared_ptr<RoutingUpdateTask>, std::optional<Route>, bool finished,
                         std::shared_ptr<KRVNavPoint> destination)>;
  using Points = std::vector<std::shared_ptr<KRVNavPoint>>;

  /// A task that is not started yet; absent when there are no destinations.
  static std::shared_ptr<RoutingTask> create(std::weak_ptr<ConfigDependents> configDependents,
                                             std::shared_ptr<KRVNavPoint> point,
                                             Points possibleDestinations,
                                             CompletionHandler completionHandler);
  ~RoutingTask() override;

  /// Whether the route must be free of barriers; the configuration's
  /// `activateBarrierFreeNavigation` at first. Takes effect with the next search.
  bool barrierFree() const { return barrierFree_; }
  void setBarrierFree(bool barrierFree) { barrierFree_ = barrierFree; }

  /// Whether every published route carries turn-by-turn instructions; false at first.
  bool directions() const { return directions_; }
  void setDirections(bool directions) { directions_ = directions; }

  /// The snapping task whose raw position is the person's; absent without one. One that has never
  /// run counts as none.
  std::shared_ptr<SnappingTask> snappingTask() const { return snappingTask_.load(); }
  void setSnappingTask(std::shared_ptr<SnappingTask> task);

  /// The position given last: at creation, or through a handle.
  std::shared_ptr<KRVNavPoint> point() const;

  /// The destinations, one of which the route leads to.
  Points possibleDestinations() const;

  /// How long the last execution took, in seconds, be it for a run or for a snapping task; 0 before
  /// the first.
  double lastExecutionDuration() const { return lastExecutionDuration_; }

  /// Anything the host wants to keep with the task; the task itself never looks at it.
  std::shared_ptr<void> taskUserInfo() const { return taskUserInfo_.load(); }
  void setTaskUserInfo(std::shared_ptr<void> info) { taskUserInfo_.store(std::move(info)); }

  /// The locations of the possible destinations, in their order.
  std::vector<CLLocation> possibleDestinationLocations() const;

  /// Whether the last search found no way on the graph, so that the route is the straight line
  /// to the nearest destination.
  bool isDirectLine() const { return directLine_; }

  /// Replaces the possible destinations, if at least one of the new ones is farther than the
  /// configuration's `targetProximityDistance` from all present ones; otherwise nothing
  /// changes. The next execution then searches a new route. While the task is running the change
  /// waits for the end of the execution (of the next one, when a snapping task is driving the route
  /// on just then), and from then on every execution searches anew.
  void updateDestinations(const Points& destinations);

  /// The graph positions are mapped onto while this task guides: the route's own graph, or the
  /// whole provided one (possibly absent) while there is no route.
  std::shared_ptr<KRVNavGraph> graphForRoute() const;

 protected:
  void execute() override;
  void executionEnded() override;
  void done() override;
  std::string typeName() const override { return "RoutingTask"; }

 private:
  friend class RoutingUpdateTask;
  friend struct FacadeRoles;

  /// What is shared with other threads; swapped whole, so that readers see a route together with
  /// its graph.
  struct State {
    std::shared_ptr<KRVNavPoint> point;
    std::shared_ptr<const Points> possibleDestinations;
    /// Destinations that came during an execution. Stays set once it was.
    std::shared_ptr<const Points> tempPossibleDestinations = nullptr;
    std::shared_ptr<const Route> route = nullptr;
    std::shared_ptr<const RouteTrack> calculatedGraphForRoute = nullptr;
    std::shared_ptr<KRVNavPoint> destination = nullptr;
  };

  /// What positions are mapped onto at a moment, before any of it is built.
  struct Followed {
    bool hasRoute = false;
    std::shared_ptr<const RouteTrack> track = nullptr;

    std::shared_ptr<KRVNavGraph> graph() const;
  };

  RoutingTask(std::weak_ptr<ConfigDependents> configDependents, std::shared_ptr<KRVNavPoint> point,
              Points possibleDestinations, CompletionHandler completionHandler);

  Followed followed() const;
  bool proceedTo(std::shared_ptr<KRVNavPoint> point, const std::function<void()>& taken,
                 std::shared_ptr<Task>& own);
  std::shared_ptr<SnappingTask> exchangeSnappingTask(std::shared_ptr<SnappingTask> task);
  void proceedWithSnappingTask();
  void updateRoute(bool publishRoute);
  bool routeProceedOnPath(bool publishRoute);
  std::shared_ptr<KRVNavPoint> placeOnRoute();
  bool isStillOnRoute(const std::shared_ptr<KRVNavPoint>& onRoute);
  std::shared_ptr<KRVNavPoint> mapOntoRoute(const std::shared_ptr<KRVNavPoint>& point);
  std::shared_ptr<Intersection> mapOntoGraph(const std::shared_ptr<KRVNavPoint>& point,
                                             bool onOriginalGraph);
  void findRoute();
  void armTimeLimit();
  void disarmTimeLimit();
  Points searchPath(const std::shared_ptr<KRVNavGraph>& graph,
                    const std::shared_ptr<Intersection>& start, const Points& destinationNodes);
  std::shared_ptr<const Route> routeAlong(const Points& nodes, const KRVNavGraph& graph,
                                          const Intersection& start);
  void completedRouteCalculation(bool publishRoute);
  void lookForArrival(const Route& route);
  void completeRoute();
  void storeCurrent();
  void publish();

  const std::shared_ptr<DijkstraImproved> pathFinder_;
  const CompletionHandler completionHandler_;
  std::atomic<bool> barrierFree_;
  std::atomic<bool> directions_{false};
  std::atomic<bool> directLine_{false};
  std::atomic<double> lastExecutionDuration_{0};
  KorvaniCommon::Guarded<std::shared_ptr<void>> taskUserInfo_;
  KorvaniCommon::Guarded<State> state_;
  KorvaniCommon::Guarded<std::shared_ptr<SnappingTask>> snappingTask_;

  // Touched only by the execution that goes on.
  State current_;  ///< what it started from, with the route as it is now
  std::shared_ptr<KRVNavPoint> originalPoint_;  ///< the snapping task's raw position, if any
  bool arrived_ = false;  ///< whether it found that the destination is reached
  std::shared_ptr<IntersectionTask> intersectionTask_;
  std::shared_ptr<SearchTimeLimit> pathFinderInterruptionTimer_;
};

}  // namespace KorvaniNavigation
