#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Building/Rectangle.hpp"

namespace KorvaniTools {

/// Tells what lies near any of many points and lines.
///
/// Cost: constant for each test while points are spread, whatever their number. Distances are
/// those of a flat map, which is exact enough for some 100 m.
class NearZone {
 public:
  /// The longest distance that may be asked for, in metres.
  static constexpr double kReach = 100;

  void add(Coordinate point);

  /// Adds the line between the two, by points 25 m apart; of a line of more than 2 km the ends
  /// only.
  void addLine(Coordinate from, Coordinate to);

  /// Whether something that was added lies within `metres`, at most `kReach`.
  bool near(Coordinate point, double metres) const;

  bool empty() const { return points_.empty(); }

  /// The rectangle of all that was added.
  const Rectangle& rectangle() const { return rectangle_; }

 private:
  using Cell = std::pair<std::int64_t, std::int64_t>;
  struct HashCell {
    std::size_t operator()(const Cell& cell) const;
  };
  static Cell cellOf(Coordinate point);
  template <class Visit>
  static void forCellsAround(Coordinate point, Visit visit);

  std::unordered_map<Cell, std::vector<Coordinate>, HashCell> points_;
  std::unordered_set<Cell, HashCell> reached_;  ///< cells that hold or touch points
  Rectangle rectangle_;
};

}  // namespace KorvaniTools
