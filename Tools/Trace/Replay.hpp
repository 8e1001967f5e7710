#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Json/EngineJson.hpp"
#include "Navigation/API/ConfigDependents.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Navigation/API/Tasks/ObstacleCheckTask.hpp"
#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Platform/Executor.hpp"
#include "Trace/CountedExecutor.hpp"
#include "Trace/TraceLine.hpp"

namespace KorvaniTools {

/// Does with the engine what a trace says, and tells what the engine delivered.
///
///     Replay replay(makeGraph(building));
///     while (const auto line = reader.next()) {
///       for (const OrderedJson& event : replay.carryOut(*line)) print(event);
///     }
///
/// A line is over when everything it started has been delivered, so the same trace always gives
/// the same events. A line that cannot be carried out changes nothing and gives an `error` event.
///
/// A replay takes the engine's facade, main queue and global executor for itself: there is one at
/// a time, on the main thread. It begins with the configurations as they are and leaves those it
/// has made or changed; tasks and graph go with it.
class Replay {
 public:
  using Graph = std::shared_ptr<KorvaniNavigation::KRVNavGraph>;
  using Events = std::vector<OrderedJson>;

  /// Gives `graph` to the engine and announces it. Background work is done on two threads, or on
  /// the main queue in builds without threads.
  explicit Replay(Graph graph);

  /// @param workers does the background work
  Replay(Graph graph, std::shared_ptr<KorvaniPlatform::Executor> workers);
  ~Replay();
  Replay(const Replay&) = delete;
  Replay& operator=(const Replay&) = delete;

  /// Does what the line says, waits until everything has been delivered, and gives the events in
  /// the order of their delivery.
  Events carryOut(const TraceLine& line);

 private:
  using Bundle = std::shared_ptr<KorvaniNavigation::ConfigDependents>;

  void perform(const ConfigOperation& operation);
  void perform(const IntersectOperation& operation);
  void perform(const RouteOperation& operation);
  void perform(const PositionOperation& operation);
  void perform(const DestinationsOperation& operation);
  void perform(const SnapOperation& operation);
  void perform(const CheckOperation& operation);
  void perform(const CancelOperation& operation);

  KorvaniNavigation::RoutingTask::CompletionHandler routingHandler();
  std::shared_ptr<KorvaniNavigation::ObstacleCheckTask> newCheck(
      const CheckOperation& operation, const Bundle& bundle,
      std::shared_ptr<KorvaniNavigation::KRVNavPoint> point);
  void observeNotifications();
  void requireRouting() const;
  void forgetRouting();
  void settle();

  const Graph graph_;
  const std::shared_ptr<CountedExecutor> work_;
  /// Its life is that of the observation.
  const std::shared_ptr<void> observer_ = std::make_shared<char>();

  std::size_t line_ = 0;
  Events events_;
  /// The routing that goes on, with the newest handle for its positions.
  std::shared_ptr<KorvaniNavigation::RoutingTask> routing_;
  std::shared_ptr<KorvaniNavigation::RoutingUpdateTask> handle_;
  /// Each keeps what its denier has seen, by configuration and kind of denier.
  std::map<std::pair<std::string, TraceDenier>,
           std::shared_ptr<KorvaniNavigation::ObstacleCheckTask>>
      checks_;
};

}  // namespace KorvaniTools
