#pragma once

#include <functional>
#include <memory>

#include "Common/Guarded.hpp"
#include "Navigation/API/Tasks/Tasks/Task.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class Intersection;
class KRVNavPoint;
class MagneticPathSnapper;
class SnappedPlace;

/// Takes a raw position and gives the coordinate to show: the position moved onto the graph, to a
/// node or onto an edge, or the position as it is when nothing fits.
///
///     auto task = navigation.snappingTask(position, [](CLLocationCoordinate2D shown) { ... });
///     task->run();
///
/// While a route of the same configuration is followed, the position is moved onto that route,
/// and the task first drives the routing task on: that keeps this task as its `snappingTask`,
/// takes its raw position for the person's, and brings its route up to date, without publishing
/// it. A routing task that is running is not touched beyond that.
///
/// A task may be run again. It maps the same position onto the graph as it is then.
///
/// Threads: all members may be called from any thread.
class KORVANI_API SnappingTask : public Task {
 public:
  using CompletionHandler = std::function<void(CLLocationCoordinate2D)>;

  /// A task that is not started yet. The handler is called exactly once for each run.
  SnappingTask(std::weak_ptr<ConfigDependents> configDependents, bool async,
               std::shared_ptr<KRVNavPoint> point, CompletionHandler completionHandler);
  ~SnappingTask() override;

  /// The place that was found; absent before the first run, and when nothing fitted.
  std::shared_ptr<Intersection> intersection() const;

  /// The position as it was passed in, before it was moved; absent before the first run.
  std::shared_ptr<KRVNavPoint> originalPoint() const { return originalPoint_.load(); }

  /// The position to snap.
  const std::shared_ptr<KRVNavPoint>& point() const { return point_; }

 protected:
  void execute() override;
  void done() override;
  std::string typeName() const override { return "SnappingTask"; }

 private:
  KorvaniCommon::Guarded<std::shared_ptr<const SnappedPlace>> place_;
  KorvaniCommon::Guarded<std::shared_ptr<KRVNavPoint>> originalPoint_;
  const std::shared_ptr<KRVNavPoint> point_;
  const CompletionHandler completionHandler_;
  const std::unique_ptr<MagneticPathSnapper> magneticPathSnapper_;
};

}  // namespace KorvaniNavigation
