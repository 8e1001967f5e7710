#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Buildings/PlainBuilding.hpp"
#include "Buildings/SeededNumbers.hpp"

namespace KorvaniBenchmarks {

/// One level of an office building.
///
/// Corridors run along it, one a row, every `kRowPitch` metres; others cross them every
/// `kBlockLength` metres. What lies along a row between two crossing corridors is a block: rooms to
/// the south of the corridor and to the north of it. In one block of ten there is no room to the
/// north but a hall, which reaches to the corridor of the next row.

inline constexpr double kBlockLength = 60.0;  ///< metres
inline constexpr double kRowPitch = 14.0;     ///< metres

struct FloorSize {
  std::size_t rows = 1;
  std::size_t columns = 1;
};

/// What joins two levels: lengths in metres.
struct Shaft {
  double shortest;
  double longest;
  double multiplicator;
  bool barrierFree;
};

inline constexpr Shaft kStairs{8.0, 10.0, 2.0, false};
inline constexpr Shaft kLift{3.5, 4.0, 6.0, true};

/// Where a level is joined with others: in the same order on every level of a building.
struct Floor {
  std::vector<std::uint32_t> stairs;
  std::vector<std::uint32_t> lifts;
};

/// Adds a level of that size to the building.
Floor addFloor(PlainBuilding& building, std::int64_t level, FloorSize size, SeededNumbers& numbers);

}  // namespace KorvaniBenchmarks
