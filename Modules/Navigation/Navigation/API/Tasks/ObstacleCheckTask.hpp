#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Common/Guarded.hpp"
#include "Navigation/API/Tasks/Tasks/Task.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;
class ObstacleDenier;

/// Checks that a new position was not reached through a wall, and gives the coordinate to show:
/// the position's own, or the last accepted one.
///
/// Made by the facade, with a denier that starts without memory. To have the next position
/// checked against this one, run the same task again:
///
///     auto task = navigation.obstacleCheckTask(position, [](CLLocationCoordinate2D shown) { ...
///     }); task->run();
///     ...
///     task->updatePoint(nextPosition);
///     task->run();
///
/// Tasks may also share a denier (see the constructor). Whoever does that runs them one after
/// another, since the engine runs tasks concurrently.
///
/// Threads: all members may be called from any thread. A `run()` while the task is running does
/// nothing, so wait for the handler before the next position.
class KORVANI_API ObstacleCheckTask : public Task {
 public:
  using CompletionHandler = std::function<void(CLLocationCoordinate2D)>;

  /// A task that is not started yet. `obstacleDenier` (not null) is kept, together with what it
  /// remembers.
  ObstacleCheckTask(std::weak_ptr<ConfigDependents> configDependents, bool async,
                    std::shared_ptr<KRVNavPoint> point,
                    std::shared_ptr<ObstacleDenier> obstacleDenier,
                    CompletionHandler completionHandler);
  ~ObstacleCheckTask() override;

  /// The position to check.
  std::shared_ptr<KRVNavPoint> point() const { return point_.load(); }

  /// Replaces the position; the next run checks it.
  void updatePoint(std::shared_ptr<KRVNavPoint> point) { point_.store(std::move(point)); }

  /// Who decides.
  const std::shared_ptr<ObstacleDenier>& obstacleDenier() const { return obstacleDenier_; }

  /// The result of the last run; absent before the first.
  std::optional<CLLocationCoordinate2D> checkedPoint() const { return checkedPoint_.load(); }

 protected:
  void execute() override;
  void done() override;
  std::string typeName() const override { return "ObstacleCheckTask"; }

 private:
  KorvaniCommon::Guarded<std::shared_ptr<KRVNavPoint>> point_;
  const CompletionHandler completionHandler_;
  const std::shared_ptr<ObstacleDenier> obstacleDenier_;
  KorvaniCommon::Guarded<std::optional<CLLocationCoordinate2D>> checkedPoint_;
};

}  // namespace KorvaniNavigation
