// The nodes in sight of a position.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Buildings/BuildingMaker.hpp"
#include "Buildings/EngineGraph.hpp"
#include "Buildings/SeededNumbers.hpp"
#include "Cases/Cases.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Peers/BoostLevel.hpp"
#include "Peers/NanoflannNodes.hpp"
#include "Support/Facade.hpp"
#include "Support/Timing.hpp"

namespace KorvaniBenchmarks {

using KorvaniNavigation::ClosestNode;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::KRVNavRegion;
using KorvaniNavigation::PositionMapper;

namespace {

enum class Place { inside, outside, closet };

constexpr double kHalfCloset = 4e-6;  // degrees

/// Walls around a place, so near that hardly ever a node is within them.
void addCloset(PlainBuilding& building, Coordinate centre) {
  const auto corner = [&](double north, double east) {
    return Coordinate{centre.latitude + north * kHalfCloset, centre.longitude + east * kHalfCloset};
  };
  building.walls.push_back(
      {0, {corner(-1, -1), corner(-1, 1), corner(1, 1), corner(1, -1), corner(-1, -1)}});
}

Coordinate placeWithin(const PlainBuilding::Level& level, SeededNumbers& numbers) {
  return {numbers.between(level.southWest.latitude, level.northEast.latitude),
          numbers.between(level.southWest.longitude, level.northEast.longitude)};
}

/// Positions of one kind; closets are built around theirs.
std::vector<Coordinate> positionsIn(PlainBuilding& building, Place kind, std::size_t count,
                                    std::uint64_t seed) {
  SeededNumbers numbers(seed);
  constexpr double kOffNode = 2.5e-5;  // degrees, some two metres
  const PlainBuilding::Level& level = building.levels.front();
  std::vector<Coordinate> positions;
  while (positions.size() < count) {
    Coordinate place = building.nodes[numbers.below(building.nodes.size())].coordinate;
    place.latitude += numbers.between(-kOffNode, kOffNode);
    place.longitude += numbers.between(-kOffNode, kOffNode);
    if (kind == Place::outside) {
      place = placeWithin(level, numbers);
      place.longitude += level.northEast.longitude - level.southWest.longitude;
    }
    if (kind == Place::closet) {
      place = placeWithin(level, numbers);
      addCloset(building, place);
    }
    positions.push_back(place);
  }
  return positions;
}

/// Above this many nodes who sees nothing takes GEOS minutes: each of its lines crosses half the
/// level, and it looks at all walls in the rectangle around a line.
constexpr std::size_t kMostNodesForGeos = 10000;

/// A level in everybody's form, with positions from which all see the same nodes.
class NearestCase {
 public:
  NearestCase(const Row& row, PlainBuilding building, Place kind, std::size_t positions)
      : row_(row),
        places_(positionsIn(building, kind, positions, row.size)),
        boost_(building, 0),
        nanoflann_(building, 0),
        graph_(makeEngineGraph(building)),
        region_(graph_->regions().front()) {
    provide(graph_);
    for (const Coordinate& place : places_) {
      points_.push_back(std::make_shared<KRVNavPoint>(place, 0));
    }
    const bool askGeos = kind == Place::inside || row.size <= kMostNodesForGeos;
    for (std::size_t i = 0; i < positions; ++i) check(i, askGeos);
  }

  std::size_t positions() const { return places_.size(); }

  /// As an intersection task does it, with a mapper of its own for each position.
  std::vector<ClosestNode> askEngine(std::size_t i) const {
    PositionMapper mapper(mainConfiguration_, true);
    mapper.useWallsOf(region_);
    return mapper.findClosestNodes(*region_, *points_[i]);
  }

  std::vector<VisibleNode> askNanoflann(std::size_t i) const {
    return nanoflann_.inSightOf(places_[i]);
  }
  std::vector<VisibleNode> askBoost(std::size_t i) const { return boost_.inSightOf(places_[i]); }

 private:
  void check(std::size_t i, bool askGeos) const {
    std::vector<VisibleNode> seen;
    for (const ClosestNode& closest : askEngine(i)) {
      seen.push_back({static_cast<std::uint32_t>(closest.node->identifier()), closest.distance});
    }
    const std::string position = "position " + std::to_string(i);
    if (askBoost(i) != seen) disagree(row_, "Boost", position);
    if (askGeos && askNanoflann(i) != seen) disagree(row_, "nanoflann", position);
  }

  Row row_;
  std::weak_ptr<KorvaniNavigation::ConfigDependents> mainConfiguration_ = mainConfiguration();
  std::vector<Coordinate> places_;
  BoostLevel boost_;
  NanoflannNodes nanoflann_;
  std::shared_ptr<KRVNavGraph> graph_;
  std::shared_ptr<KRVNavRegion> region_;
  std::vector<std::shared_ptr<KRVNavPoint>> points_;
};

/// Has `ask(data, i)` be measured for each position.
template <class AskNearest>
void addNearestContestant(const Row& row, const std::string& name,
                          const std::shared_ptr<Shared<NearestCase>>& shared, AskNearest ask) {
  measure(row, name, [shared, ask](benchmark::State& state) {
    const NearestCase& data = shared->get();
    timeEach(state, data.positions(),
             [&](std::size_t i) { benchmark::DoNotOptimize(ask(data, i)); });
  });
}

void addNearestRow(const Row& row, Place kind, std::size_t positions) {
  const auto shared = std::make_shared<Shared<NearestCase>>([row, kind, positions] {
    return std::make_shared<NearestCase>(row, makeOffices(row.size, 1, row.size), kind, positions);
  });
  addNearestContestant(row, kEngine, shared, std::mem_fn(&NearestCase::askEngine));
  if (kind == Place::inside || row.size <= kMostNodesForGeos) {
    addNearestContestant(row, "nanoflann, GEOS", shared, std::mem_fn(&NearestCase::askNanoflann));
  }
  addNearestContestant(row, "Boost R-trees", shared, std::mem_fn(&NearestCase::askBoost));
}

}  // namespace

void addNearestNodes(const Extent& extent) {
  const char* table = "Nearest visible nodes";
  const std::size_t divisor = extent.quick ? 3 : 1;
  for (const std::size_t nodes : {1000U, 10000U, 100000U}) {
    addNearestRow({table, "inside", nodes}, Place::inside, 300 / divisor);
  }
  const std::pair<const char*, Place> blind[] = {{"sees nothing: closet", Place::closet},
                                                 {"sees nothing: outside", Place::outside}};
  for (const auto& [data, kind] : blind) {
    for (const std::size_t nodes : {1000U, 10000U, 100000U}) {
      // Others look at all nodes then.
      if (extent.quick && nodes > 10000) continue;
      addNearestRow({table, data, nodes}, kind, nodes > 1000 ? 3 : 12 / divisor);
    }
  }
}

}  // namespace KorvaniBenchmarks
