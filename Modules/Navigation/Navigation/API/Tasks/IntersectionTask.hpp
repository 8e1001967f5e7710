#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Navigation/API/Tasks/Tasks/Task.hpp"
#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class EdgeIntersection;
class KRVNavPoint;
class ObstacleDetector;
class PositionMapper;

/// Maps a position onto the graph: onto the nearest node it can see, or onto the nearest point
/// of one of such nodes' edges.
///
///     auto task = std::make_shared<IntersectionTask>(
///         bundle, position, [](const std::shared_ptr<Intersection>& place) { ... }, true);
///     task->run();
///
/// The task is always synchronous: the handler has been called when `run()` returns (unless
/// there is no graph yet, see `Task`). It gets no intersection when the position has no region
/// or sees no node.
///
/// Threads: one at a time per task; several tasks may run at once. The handler is called on the
/// thread that runs the task and may start other tasks.
class KORVANI_API IntersectionTask : public Task {
 public:
  using CompletionHandler = std::function<void(const std::shared_ptr<Intersection>&)>;

  /// @param onOriginalGraph true: map onto the provided graph; false: onto the route that is
  ///     being followed, where there is one
  IntersectionTask(std::weak_ptr<ConfigDependents> configDependents,
                   std::shared_ptr<KRVNavPoint> point, CompletionHandler completionHandler,
                   bool onOriginalGraph);
  ~IntersectionTask() override;

  bool onOriginalGraph() const;

  /// The position to map.
  const std::shared_ptr<KRVNavPoint>& navigationPoint() const { return navigationPoint_; }

  /// The walls tested against last; absent until the task has looked at a region.
  std::shared_ptr<ObstacleDetector> obstacleDetector() const;

  /// The result; absent until the task has run, and when nothing was found.
  const std::shared_ptr<Intersection>& intersection() const { return intersection_; }

  /// Maps any position, from here on against the walls of its region. Absent when it has no
  /// region or sees no node.
  std::shared_ptr<Intersection> intersect(const KRVNavPoint& point);

  /// Maps a position onto one node or that node's edges, whichever is nearest and in sight.
  /// Fatal error when no walls are known yet, see `obstacleDetector()`.
  std::shared_ptr<Intersection> intersect(const KRVNavPoint& point,
                                          const std::shared_ptr<KRVNavPoint>& graphNode);

  /// Projects a coordinate onto one segment: the foot of the perpendicular, on the level of
  /// `start`, with its distance in metres and no `delta`. Absent when the foot lies outside the
  /// box of the two ends, or behind a wall (unless walls are ignored).
  std::shared_ptr<EdgeIntersection> findIntersectionOnSegmentBetween(
      const std::shared_ptr<KRVNavPoint>& start, const std::shared_ptr<KRVNavPoint>& andEnd,
      CLLocationCoordinate2D forCoordinate, bool ignoreWalls) const;

  /// Runs the task like `run()`, but never waits for a graph: without one it does nothing, and
  /// there is no intersection. For those who need the answer now or not at all.
  using Task::runUnlessGraphIsMissing;

  /// The machinery behind the task; for the engine's own use.
  PositionMapper& mapper() { return *mapper_; }

 protected:
  void execute() override;
  void done() override;
  std::string typeName() const override { return "IntersectionTask"; }

 private:
  const CompletionHandler completionHandler_;
  const std::shared_ptr<KRVNavPoint> navigationPoint_;
  const std::unique_ptr<PositionMapper> mapper_;
  std::shared_ptr<Intersection> intersection_;
};

}  // namespace KorvaniNavigation
