#include "Buildings/BuildingMaker.hpp"

#include <algorithm>
#include <cmath>

#include "Buildings/Floor.hpp"
#include "Buildings/SeededNumbers.hpp"
#include "Buildings/Site.hpp"

namespace KorvaniBenchmarks {

namespace {

constexpr double kNodesPerBlock = 50.0;

FloorSize floorSizeFor(double nodes) {
  const double blocks = std::max(1.0, nodes / kNodesPerBlock);
  // About as deep as it is wide.
  const double columns = std::max(1.0, std::round(std::sqrt(blocks * kRowPitch / kBlockLength)));
  const double rows = std::max(1.0, std::round(blocks / columns));
  return {static_cast<std::size_t>(rows), static_cast<std::size_t>(columns)};
}

void joinLevels(PlainBuilding& building, const Floor& lower, const Floor& upper,
                SeededNumbers& numbers) {
  const auto join = [&](std::uint32_t from, std::uint32_t to, const Shaft& shaft) {
    const double length = numbers.between(shaft.shortest, shaft.longest);
    building.edges.push_back({from, to, length, shaft.multiplicator, shaft.barrierFree});
    building.edges.push_back({to, from, length, shaft.multiplicator, shaft.barrierFree});
  };
  for (std::size_t i = 0; i < lower.stairs.size(); ++i) {
    join(lower.stairs[i], upper.stairs[i], kStairs);
  }
  for (std::size_t i = 0; i < lower.lifts.size(); ++i) join(lower.lifts[i], upper.lifts[i], kLift);
}

}  // namespace

PlainBuilding makeOffices(std::size_t nodes, std::size_t levels, std::uint64_t seed) {
  PlainBuilding building;
  SeededNumbers numbers(seed);
  const FloorSize size = floorSizeFor(static_cast<double>(nodes) / static_cast<double>(levels));
  Floor below;
  for (std::size_t level = 0; level < levels; ++level) {
    Floor floor = addFloor(building, static_cast<std::int64_t>(level), size, numbers);
    if (level > 0) joinLevels(building, below, floor, numbers);
    below = std::move(floor);
  }
  return building;
}

PlainBuilding makeLattice(std::size_t nodes) {
  constexpr double kPitch = 5.0;
  const Site site = Site::straight();
  const auto side = static_cast<std::uint32_t>(std::lround(std::sqrt(static_cast<double>(nodes))));
  PlainBuilding building;
  const auto joinBoth = [&](std::uint32_t a, std::uint32_t b) {
    building.edges.push_back({a, b, kPitch, 1.0, true});
    building.edges.push_back({b, a, kPitch, 1.0, true});
  };
  for (std::uint32_t row = 0; row < side; ++row) {
    for (std::uint32_t column = 0; column < side; ++column) {
      const std::uint32_t node = row * side + column;
      building.nodes.push_back({site.at({kPitch * column, kPitch * row}), 0});
      if (column > 0) joinBoth(node - 1, node);
      if (row > 0) joinBoth(node - side, node);
    }
  }
  const double end = kPitch * side;
  building.levels.push_back({0, site.at({-kPitch, -kPitch}), site.at({end, end})});
  return building;
}

}  // namespace KorvaniBenchmarks
