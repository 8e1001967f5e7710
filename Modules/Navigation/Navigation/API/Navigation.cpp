#include "Navigation/API/Navigation.hpp"

#include <utility>

#include "Common/Logging.hpp"
#include "Navigation/API/Constants.hpp"
#include "Navigation/API/MainConfiguration.hpp"
#include "Navigation/API/Tasks/Tasks/TaskHost.hpp"
#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"
#include "Navigation/Graph/GraphSettings.hpp"
#include "Navigation/Graph/GraphSource.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Localisation/RegionFinder.hpp"
#include "Navigation/Obstacles/StrengthBasedObstacleDenier.hpp"
#include "Navigation/Snapping/ActiveRoute.hpp"
#include "Platform/FatalError.hpp"
#include "Platform/MainQueue.hpp"

namespace KorvaniNavigation {

namespace {

std::string configNameOf(const Task& task) {
  const auto bundle = task.configDependents();
  if (!bundle) KORVANI_FATAL("the configuration of a task is gone");
  return bundle->configName();
}

}  // namespace

/// What the lower layers ask of the facade, each through a role they have declared themselves.
/// Never destroyed, like the facade, since tasks may still work while the process ends.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted
struct FacadeRoles final : GraphSettings, GraphSource, TaskHost, ActiveRoute {
  static FacadeRoles& shared() {
    static auto& roles = *new FacadeRoles(Navigation::sharedInstance());
    return roles;
  }

  explicit FacadeRoles(Navigation& facade) : navigation(facade), mainConfig(facade.config()) {}

  double levelHeight() const override { return mainConfig.levelHeight(); }
  double targetProximityDistance() const override { return mainConfig.targetProximityDistance(); }

  std::shared_ptr<KRVNavGraph> graph() const override { return navigation.graph(); }
  std::shared_ptr<KRVNavGraph> graphForActiveRoute() const override {
    // Without a reference of its own: the last one to a task must not end on this thread.
    const auto followed =
        navigation.activeRoutingTask_.read([](const std::shared_ptr<RoutingTask>& active) {
          return active ? std::optional(active->followed()) : std::nullopt;
        });
    return followed ? followed->graph() : nullptr;
  }

  void appendTask(const std::shared_ptr<Task>& task) override {
    navigation.pendingTasks_.appendUnlessContained(task);
  }
  void removeTask(const std::shared_ptr<Task>& task) override { navigation.forget(task); }

  std::optional<std::string> configName() const override {
    return navigation.activeRoutingTask_.read([](const std::shared_ptr<RoutingTask>& active) {
      return active ? std::optional(configNameOf(*active)) : std::nullopt;
    });
  }
  std::shared_ptr<const RouteTrack> track() const override {
    return navigation.activeRoutingTask_.read([](const std::shared_ptr<RoutingTask>& active) {
      return active ? active->followed().track : nullptr;
    });
  }
  void proceed(const std::shared_ptr<SnappingTask>& snappingTask) override;

  Navigation& navigation;
  Config& mainConfig;  // the main configuration is one object for good
};

const GraphSettings& graphSettings() { return FacadeRoles::shared(); }
const GraphSource& graphSource() { return FacadeRoles::shared(); }
TaskHost& taskHost() { return FacadeRoles::shared(); }
ActiveRoute& activeRoute() { return FacadeRoles::shared(); }

void FacadeRoles::proceed(const std::shared_ptr<SnappingTask>& snappingTask) {
  const std::string name = configNameOf(*snappingTask);
  std::shared_ptr<SnappingTask> replaced;
  // Only with the task claimed is there a reference to it on this thread. Another one might let
  // a routing task deliver that the host has cancelled in the meantime.
  auto borrowed =
      navigation.activeRoutingTask_.read([&](const std::shared_ptr<RoutingTask>& active) {
        if (!active || configNameOf(*active) != name) return std::shared_ptr<RoutingTask>();
        replaced = active->exchangeSnappingTask(snappingTask);
        return active->borrow() ? active : nullptr;
      });
  if (replaced && !KorvaniPlatform::isMainThread()) {
    KorvaniPlatform::mainQueue().async([replaced = std::move(replaced)] {});
  }
  if (!borrowed) return;
  borrowed->proceedWithSnappingTask();
  RoutingTask::giveBack(std::move(borrowed));
}

std::string mainConfigName() { return Navigation::sharedInstance().defaultConfig()->configName(); }

namespace {

std::shared_ptr<ConfigDependents> asBundle(
    const std::shared_ptr<KorvaniCommon::ConfigDependents>& bundle) {
  return std::static_pointer_cast<ConfigDependents>(bundle);
}

}  // namespace

Navigation& Navigation::sharedInstance() {
  static Navigation& instance = [&]() -> Navigation& {
    auto& made = *new Navigation();
    made.makeMainConfig();
    return made;
  }();
  return instance;
}

Navigation::Navigation() : directionsFinder_(std::make_unique<TurnByTurnDirectionCalculator>()) {
  KorvaniCommon::KRVSwiftLogging::setLoggingEnabled(kKRVNavigationModuleName, true);
}

Navigation::~Navigation() = default;

void Navigation::setActiveRoutingTask(std::shared_ptr<RoutingTask> task) {
  activeRoutingTask_.store(std::move(task));
}

std::shared_ptr<ConfigDependents> Navigation::mainBundle() const {
  return asBundle(defaultConfig());
}

Config& Navigation::config() const { return mainBundle()->config(); }

Navigation::Configs Navigation::navigationConfigs() const {
  Configs bundles;
  for (const auto& entry : _configs()) bundles.set(entry.first, asBundle(entry.second));
  return bundles;
}

std::shared_ptr<KorvaniCommon::Config> Navigation::createNewConfig() {
  return std::make_shared<Config>();
}

std::shared_ptr<KorvaniCommon::ConfigDependents> Navigation::createNewConfigDependents(
    const std::string& configName) {
  auto bundle = std::make_shared<ConfigDependents>(configName, std::make_shared<Config>());
  bundle->attach();
  return bundle;
}

void Navigation::provideGraph(std::shared_ptr<KRVNavGraph> graph) {
  graph_.store(std::move(graph));
  for (const auto& entry : navigationConfigs()) {
    entry.second->intersectionFinder()->regionFinder()->updateRegions();
  }
}

std::shared_ptr<RoutingTask> Navigation::routingTask(
    std::shared_ptr<KRVNavPoint> point, Points possibleDestinations,
    RoutingTask::CompletionHandler completionHandler) {
  return routingTask(std::move(point), std::move(possibleDestinations),
                     defaultConfig()->configName(), std::move(completionHandler));
}

std::shared_ptr<RoutingTask> Navigation::routingTask(
    std::shared_ptr<KRVNavPoint> point, Points possibleDestinations, const std::string& config,
    RoutingTask::CompletionHandler completionHandler) {
  const auto bundle = asBundle(configFor(config));
  if (!bundle) return nullptr;
  auto task = RoutingTask::create(bundle, std::move(point), std::move(possibleDestinations),
                                  std::move(completionHandler));
  if (task && bundle->isMainConfig()) setActiveRoutingTask(task);
  return task;
}

std::shared_ptr<SnappingTask> Navigation::snappingTask(
    std::shared_ptr<KRVNavPoint> point, SnappingTask::CompletionHandler completionHandler) {
  return snappingTask(true, std::move(point), std::move(completionHandler));
}

std::shared_ptr<SnappingTask> Navigation::snappingTask(
    bool async, std::shared_ptr<KRVNavPoint> point,
    SnappingTask::CompletionHandler completionHandler) {
  return snappingTask(async, std::move(point), defaultConfig()->configName(),
                      std::move(completionHandler));
}

std::shared_ptr<SnappingTask> Navigation::snappingTask(
    bool async, std::shared_ptr<KRVNavPoint> point, const std::string& config,
    SnappingTask::CompletionHandler completionHandler) {
  const auto bundle = asBundle(configFor(config));
  if (!bundle) return nullptr;
  return std::make_shared<SnappingTask>(bundle, async, std::move(point),
                                        std::move(completionHandler));
}

std::shared_ptr<ObstacleCheckTask> Navigation::obstacleCheckTask(
    std::shared_ptr<KRVNavPoint> point, ObstacleCheckTask::CompletionHandler completionHandler) {
  return obstacleCheckTask(true, std::move(point), std::move(completionHandler));
}

std::shared_ptr<ObstacleCheckTask> Navigation::obstacleCheckTask(
    bool async, std::shared_ptr<KRVNavPoint> point,
    ObstacleCheckTask::CompletionHandler completionHandler) {
  return obstacleCheckTask(async, std::move(point), defaultConfig()->configName(),
                           std::move(completionHandler));
}

std::shared_ptr<ObstacleCheckTask> Navigation::obstacleCheckTask(
    bool async, std::shared_ptr<KRVNavPoint> point, const std::string& config,
    ObstacleCheckTask::CompletionHandler completionHandler) {
  const auto bundle = asBundle(configFor(config));
  if (!bundle) return nullptr;
  return std::make_shared<ObstacleCheckTask>(bundle, async, std::move(point),
                                             std::make_shared<StrengthBasedObstacleDenier>(bundle),
                                             std::move(completionHandler));
}

std::optional<Directions> Navigation::directionsForRoute(const std::vector<Step>& steps,
                                                         bool andHistoryUsage) const {
  return directionsFinder_->firstDirectionForRoute(steps, andHistoryUsage);
}

void Navigation::cancelAllTasks() {
  pendingTasks_.removeAll();
  graph_.store(nullptr);
  activeRoutingTask_.store(nullptr);
}

void Navigation::removeTask(const std::shared_ptr<Task>& task) {
  if (!task) return;
  // First, so that a position which another thread is giving to the task just now either sees the
  // mark or has brought the task into the list by the time it is taken out.
  const bool wasLetGo = task->isLetGo_.exchange(true);
  // A task at work that is not in the list was taken out by that thread, which has seen the mark.
  if (!forget(task) && !wasLetGo && !task->running()) task->isLetGo_ = false;
}

/// Whether the task was known.
bool Navigation::forget(const std::shared_ptr<Task>& task) {
  bool isKnown = false;
  pendingTasks_.perform([&] {
    const auto index = pendingTasks_.indexOf(task);
    isKnown = index.has_value();
    if (index) pendingTasks_.removeAt(*index);
  });
  const auto isIt = [&](const std::shared_ptr<RoutingTask>& active) {
    return active && *active == *task;
  };
  if (!activeRoutingTask_.read(isIt)) return isKnown;
  activeRoutingTask_.update([&](std::shared_ptr<RoutingTask>& active) {
    if (isIt(active)) active.reset();
  });
  return true;
}

}  // namespace KorvaniNavigation
