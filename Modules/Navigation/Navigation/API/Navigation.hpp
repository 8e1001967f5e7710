#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Common/CommonModule.hpp"
#include "Common/Guarded.hpp"
#include "Common/OrderedDictionary.hpp"
#include "Common/SynchronizedArray.hpp"
#include "Navigation/API/Config.hpp"
#include "Navigation/API/ConfigDependents.hpp"
#include "Navigation/API/Tasks/ObstacleCheckTask.hpp"
#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Navigation/Directions/Directions.hpp"
#include "Navigation/Routing/Step.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class DirectionsFinder;
struct FacadeRoles;  // NOLINT(cppcoreguidelines-virtual-class-destructor): see its source
class KRVNavGraph;
class KRVNavPoint;

/// The engine's single entry point: holds the building's graph, the named configurations and
/// the tasks that go on, and makes the tasks a host runs.
///
///     auto& navigation = Navigation::sharedInstance();
///     navigation.provideGraph(graph);
///     NotificationCenter::defaultCenter().post(NavigationGraphCreatedNotification);
///     auto task = navigation.routingTask(position, {destination}, handler);
///     task->run();
///
/// Posting the notification is the host's business, after every `provideGraph`: it starts the
/// tasks that were run before there was a graph.
///
/// Threads: everything may be called from any thread, also from inside a handler.
/// `provideGraph` and `cancelAllTasks` should be called while no task is being started on
/// another thread, since a task reads the graph several times. The graph must not change while
/// tasks run on it.
/// Ownership: the facade owns the graph, the configurations, the tasks that have started and
/// not finished, and the active routing task. It is made on first use and never destroyed.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): there is one, never destroyed
class KORVANI_API Navigation final : public KorvaniCommon::CommonModule {
 public:
  using Points = std::vector<std::shared_ptr<KRVNavPoint>>;
  using Configs = KorvaniCommon::OrderedDictionary<std::string, std::shared_ptr<ConfigDependents>>;

  /// The one instance. Making it switches logging on for the module's name.
  static Navigation& sharedInstance();

  /// The graph provided last; absent before the first, and after `cancelAllTasks()`.
  std::shared_ptr<KRVNavGraph> graph() const { return graph_.load(); }

  /// The routing task that guides the person: the last one made for the main configuration,
  /// until it is removed; absent otherwise.
  std::shared_ptr<RoutingTask> activeRoutingTask() const { return activeRoutingTask_.load(); }
  void setActiveRoutingTask(std::shared_ptr<RoutingTask> task);

  /// The main configuration.
  Config& config() const;

  /// All configuration bundles by name, in the order they were made. Further ones are made with
  /// `addConfig(name)`.
  Configs navigationConfigs() const;

  /// A new configuration with the defaults.
  std::shared_ptr<KorvaniCommon::Config> createNewConfig() override;

  /// A new bundle of that name with a new configuration; not registered.
  std::shared_ptr<KorvaniCommon::ConfigDependents> createNewConfigDependents(
      const std::string& configName) override;

  /// Takes the building's graph, in place of any earlier one, and tells the region finder of
  /// every configuration. Tasks that wait for a graph start with the notification, which the
  /// host posts next.
  void provideGraph(std::shared_ptr<KRVNavGraph> graph);

  /// A task that checks a position against the walls, not started yet, with a denier of its own
  /// (a `StrengthBasedObstacleDenier`): on the main configuration or on the named one, and
  /// asynchronous unless `async` is false. Absent when there is no configuration of that name.
  std::shared_ptr<ObstacleCheckTask> obstacleCheckTask(
      std::shared_ptr<KRVNavPoint> point, ObstacleCheckTask::CompletionHandler completionHandler);
  std::shared_ptr<ObstacleCheckTask> obstacleCheckTask(
      bool async, std::shared_ptr<KRVNavPoint> point,
      ObstacleCheckTask::CompletionHandler completionHandler);
  std::shared_ptr<ObstacleCheckTask> obstacleCheckTask(
      bool async, std::shared_ptr<KRVNavPoint> point, const std::string& config,
      ObstacleCheckTask::CompletionHandler completionHandler);

  /// A task that moves a position onto the graph, not started yet: on the main configuration or
  /// on the named one, and asynchronous unless `async` is false. Absent when there is no
  /// configuration of that name.
  std::shared_ptr<SnappingTask> snappingTask(std::shared_ptr<KRVNavPoint> point,
                                             SnappingTask::CompletionHandler completionHandler);
  std::shared_ptr<SnappingTask> snappingTask(bool async, std::shared_ptr<KRVNavPoint> point,
                                             SnappingTask::CompletionHandler completionHandler);
  std::shared_ptr<SnappingTask> snappingTask(bool async, std::shared_ptr<KRVNavPoint> point,
                                             const std::string& config,
                                             SnappingTask::CompletionHandler completionHandler);

  /// A routing task on the main configuration, not started yet; it becomes the active one.
  /// Absent when there are no destinations.
  std::shared_ptr<RoutingTask> routingTask(std::shared_ptr<KRVNavPoint> point,
                                           Points possibleDestinations,
                                           RoutingTask::CompletionHandler completionHandler);

  /// The same on the named configuration; absent also when there is none of that name. Becomes
  /// the active one only on the main configuration.
  std::shared_ptr<RoutingTask> routingTask(std::shared_ptr<KRVNavPoint> point,
                                           Points possibleDestinations, const std::string& config,
                                           RoutingTask::CompletionHandler completionHandler);

  /// The first instruction for these steps; absent when there is none.
  /// @param andHistoryUsage makes no difference
  std::optional<Directions> directionsForRoute(const std::vector<Step>& steps,
                                               bool andHistoryUsage) const;

  /// Lets go of all tasks, the graph and the active routing task. Tasks that are working are not
  /// interrupted; they deliver as usual, if anybody still holds them. Tasks run from now on wait
  /// for a new graph.
  void cancelAllTasks();

  /// Lets a task go. A host calls this to stop guiding with a routing task, which then is no longer
  /// the active one: nothing is delivered any more, whatever it is working on and whatever
  /// positions other threads are feeding just then, and its handles do nothing, until the host runs
  /// it again (or announces a graph, if the task once waited for one). Does nothing for a task that
  /// is not known. Run again, the task is not the active one unless the host makes it so.
  void removeTask(const std::shared_ptr<Task>& task);

 private:
  friend struct FacadeRoles;
  struct SameTask {
    bool operator()(const std::shared_ptr<Task>& a, const std::shared_ptr<Task>& b) const {
      return *a == *b;
    }
  };

  Navigation();
  ~Navigation() override;

  std::shared_ptr<ConfigDependents> mainBundle() const;
  bool forget(const std::shared_ptr<Task>& task);

  KorvaniCommon::Guarded<std::shared_ptr<KRVNavGraph>> graph_;
  KorvaniCommon::SynchronizedArray<std::shared_ptr<Task>, SameTask> pendingTasks_;
  KorvaniCommon::Guarded<std::shared_ptr<RoutingTask>> activeRoutingTask_;
  const std::unique_ptr<DirectionsFinder> directionsFinder_;
};

}  // namespace KorvaniNavigation
