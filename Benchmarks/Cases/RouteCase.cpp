#include "Cases/RouteCase.hpp"

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

#include "Buildings/BuildingMaker.hpp"
#include "Buildings/EngineGraph.hpp"
#include "Buildings/SeededNumbers.hpp"
#include "Navigation/API/Config.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Support/Facade.hpp"

namespace KorvaniBenchmarks {

using KorvaniNavigation::Config;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Navigation;

namespace {

constexpr std::size_t kDestinations = 4;
/// Metres: nearer ones would be arrivals, or ways without an edge.
constexpr double kNearestDestination = 30.0;

LevelPlace placeNearANode(const PlainBuilding& building, SeededNumbers& numbers) {
  constexpr double kOffset = 1e-5;  // degrees, about a metre
  const PlainBuilding::Node& node = building.nodes[numbers.below(building.nodes.size())];
  return {{node.coordinate.latitude + numbers.between(-kOffset, kOffset),
           node.coordinate.longitude + numbers.between(-kOffset, kOffset)},
          node.level};
}

std::shared_ptr<KRVNavPoint> pointAt(const LevelPlace& place) {
  return std::make_shared<KRVNavPoint>(place.coordinate, place.level);
}

}  // namespace

RouteCase::RouteCase(const Row& row, const PlainBuilding& building, std::size_t queries)
    : row_(row), peers_(building) {
  Config& config = Navigation::sharedInstance().config();
  config.setActivateRouteOptimisation(true);
  // Levels have their walls in different places here.
  config.setCheckDestinationsAgainstOwnWalls(true);
  provide(makeEngineGraph(building));
  SeededNumbers numbers(row.size);
  while (queries_.size() < queries) addQuery(building, numbers);
  for (std::size_t i = 0; i < queries; ++i) check(i);
}

RouteCase::~RouteCase() {
  stopGuiding();
  provide(nullptr);
}

void RouteCase::addQuery(const PlainBuilding& building, SeededNumbers& numbers) {
  Query query{placeNearANode(building, numbers), {}};
  while (query.destinations.size() < kDestinations) {
    const LevelPlace place = placeNearANode(building, numbers);
    const double distance =
        KorvaniPlatform::greatCircleDistance(place.coordinate, query.position.coordinate);
    if (distance >= kNearestDestination) query.destinations.push_back(place);
  }
  // Who sees nothing gets no route, or a straight line: nothing to compare.
  if (!peers_.find(query.position, query.destinations)) return;
  positions_.push_back(pointAt(query.position));
  destinations_.emplace_back();
  for (const LevelPlace& place : query.destinations) destinations_.back().push_back(pointAt(place));
  queries_.push_back(std::move(query));
}

void RouteCase::guide(std::size_t i) {
  route_.reset();
  task_ = Navigation::sharedInstance().routingTask(
      positions_[i], destinations_[i],
      [this](auto update, auto route, bool /*finished*/, auto /*destination*/) {
        update_ = std::move(update);
        route_ = std::move(route);
      });
  task_->setDirections(true);
  task_->run();
  pump();
}

void RouteCase::stopGuiding() {
  if (!task_) return;
  Navigation::sharedInstance().removeTask(task_);
  task_.reset();
  update_.reset();
}

void RouteCase::askEngine(std::size_t i) {
  guide(i);
  stopGuiding();
}

std::optional<AssembledRoute> RouteCase::askPeers(std::size_t i) {
  return peers_.find(queries_[i].position, queries_[i].destinations);
}

void RouteCase::check(std::size_t i) {
  askEngine(i);
  const auto assembled = askPeers(i);
  const std::string query = "route " + std::to_string(i);
  if (!route_) disagree(row_, "Boost, LEMON", query + " is missing");
  if (route_->steps().size() != assembled->steps.size()) {
    disagree(row_, "Boost, LEMON", query + " has other steps");
  }
  constexpr double kSame = 1e-6;
  if (std::abs(route_->totalDistance() - assembled->distance) > kSame ||
      std::abs(route_->travelTime() - assembled->time) > kSame) {
    disagree(row_, "Boost, LEMON",
             query + " is " + std::to_string(route_->totalDistance()) + " m long, or " +
                 std::to_string(assembled->distance) + " m");
  }
}

std::vector<RouteSize> routeSizes(const Extent& extent) {
  if (extent.quick) return {{1000, 3, 30}, {10000, 5, 15}, {100000, 10, 5}};
  return {{1000, 3, 200}, {10000, 5, 100}, {100000, 10, 20}, {1000000, 20, 10}};
}

Shared<RouteCase>::Make routeCaseOf(const Row& row, const RouteSize& size) {
  return [row, size] {
    return std::make_shared<RouteCase>(row, makeOffices(size.nodes, size.levels, size.nodes),
                                       size.queries);
  };
}

}  // namespace KorvaniBenchmarks
