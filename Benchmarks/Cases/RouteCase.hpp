#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Peers/AssembledRoutes.hpp"
#include "Support/Suite.hpp"

namespace KorvaniBenchmarks {

/// A building with a facade that guides through it, and the same assembled from peers; with queries
/// for which both find the same route.
class RouteCase {
 public:
  struct Query {
    LevelPlace position;
    std::vector<LevelPlace> destinations;
  };

  RouteCase(const Row& row, const PlainBuilding& building, std::size_t queries);
  ~RouteCase();
  RouteCase(const RouteCase&) = delete;
  RouteCase& operator=(const RouteCase&) = delete;

  std::size_t queries() const { return queries_.size(); }

  /// Has the facade find and deliver a route, directions and cut corners included; the task is let
  /// go again.
  void askEngine(std::size_t i);
  std::optional<AssembledRoute> askPeers(std::size_t i);

  /// As `askEngine`, but goes on guiding.
  void guide(std::size_t i);
  void stopGuiding();

  /// What the routing task has delivered last; no route before that.
  const std::optional<KorvaniNavigation::Route>& route() const { return route_; }
  const std::shared_ptr<KorvaniNavigation::RoutingUpdateTask>& update() const { return update_; }

 private:
  void addQuery(const PlainBuilding& building, class SeededNumbers& numbers);
  void check(std::size_t i);

  Row row_;
  AssembledRoutes peers_;
  std::vector<Query> queries_;
  std::vector<std::shared_ptr<KorvaniNavigation::KRVNavPoint>> positions_;
  std::vector<KorvaniNavigation::RoutingTask::Points> destinations_;
  std::shared_ptr<KorvaniNavigation::RoutingTask> task_;
  std::shared_ptr<KorvaniNavigation::RoutingUpdateTask> update_;
  std::optional<KorvaniNavigation::Route> route_;
};

/// The sizes of buildings that routes are looked for in.
struct RouteSize {
  std::size_t nodes;
  std::size_t levels;
  std::size_t queries;
};
std::vector<RouteSize> routeSizes(const Extent& extent);

/// Makes the case of a row.
Shared<RouteCase>::Make routeCaseOf(const Row& row, const RouteSize& size);

}  // namespace KorvaniBenchmarks
