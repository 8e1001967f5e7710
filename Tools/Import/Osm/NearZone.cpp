#include "Import/Osm/NearZone.hpp"

#include <algorithm>
#include <cmath>

namespace KorvaniTools {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kMetresPerDegree = 111195;
/// A little above `kReach` from south to north.
constexpr double kCellsPerDegree = 1000;
/// Towards the poles cells get narrow; beyond that many, some distances are missed.
constexpr std::int64_t kMostColumns = 20;
constexpr double kStep = 25;
constexpr double kLongestLine = 2000;
/// Points closer than this to another one add nothing.
constexpr double kApart = 1;

double shrinkage(double latitude) { return std::max(0.01, std::cos(latitude * kPi / 180)); }

double metresBetween(Coordinate a, Coordinate b) {
  const double north = (a.latitude - b.latitude) * kMetresPerDegree;
  const double east =
      (a.longitude - b.longitude) * kMetresPerDegree * shrinkage((a.latitude + b.latitude) / 2);
  return std::hypot(north, east);
}

}  // namespace

std::size_t NearZone::HashCell::operator()(const Cell& cell) const {
  const auto mixed = static_cast<std::uint64_t>(cell.first) * 0x9E3779B97F4A7C15U ^
                     static_cast<std::uint64_t>(cell.second) * 0xC2B2AE3D27D4EB4FU;
  return static_cast<std::size_t>(mixed ^ (mixed >> 29U));
}

NearZone::Cell NearZone::cellOf(Coordinate point) {
  return {std::llround(std::floor(point.latitude * kCellsPerDegree)),
          std::llround(std::floor(point.longitude * kCellsPerDegree))};
}

template <class Visit>
void NearZone::forCellsAround(Coordinate point, Visit visit) {
  const Cell centre = cellOf(point);
  const double columns = std::ceil(1 / shrinkage(point.latitude));
  const auto reach = std::min(kMostColumns, static_cast<std::int64_t>(columns));
  for (std::int64_t row = -1; row <= 1; ++row) {
    for (std::int64_t column = -reach; column <= reach; ++column) {
      visit(Cell{centre.first + row, centre.second + column});
    }
  }
}

void NearZone::add(Coordinate point) {
  std::vector<Coordinate>& cell = points_[cellOf(point)];
  rectangle_.include(point);
  const bool known = std::any_of(cell.begin(), cell.end(), [point](Coordinate other) {
    return metresBetween(point, other) < kApart;
  });
  if (known) return;
  if (cell.empty()) forCellsAround(point, [this](const Cell& each) { reached_.insert(each); });
  cell.push_back(point);
}

void NearZone::addLine(Coordinate from, Coordinate to) {
  const double length = metresBetween(from, to);
  add(from);
  if (length < kLongestLine) {
    for (int step = 1; step * kStep < length; ++step) {
      const double part = step * kStep / length;
      add({from.latitude + (to.latitude - from.latitude) * part,
           from.longitude + (to.longitude - from.longitude) * part});
    }
  }
  add(to);
}

bool NearZone::near(Coordinate point, double metres) const {
  if (reached_.find(cellOf(point)) == reached_.end()) return false;
  bool found = false;
  forCellsAround(point, [&](const Cell& each) {
    const auto cell = found ? points_.end() : points_.find(each);
    if (cell == points_.end()) return;
    found = std::any_of(cell->second.begin(), cell->second.end(),
                        [&](Coordinate other) { return metresBetween(point, other) <= metres; });
  });
  return found;
}

}  // namespace KorvaniTools
