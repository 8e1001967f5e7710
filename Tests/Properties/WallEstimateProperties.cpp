// Lines between coordinates, which are first laid through estimates of where they lie, against a
// plain loop over all walls: 40 questions a world and 25 worlds a case. Many lines end on a wall,
// or so close to one that only the last digits tell. What a world holds follows from its seed,
// which a failing case prints.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <ostream>
#include <utility>
#include <vector>

#include "Navigation/Obstacles/WallGrid.hpp"
#include "SeededNumbers.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::MKMapPoint;
using KorvaniNavigation::segmentsMeet;
using KorvaniNavigation::WallEdge;
using KorvaniNavigation::WallGrid;
using KorvaniPlatform::MKMapPointForCoordinate;

struct Place {
  std::uint32_t seed;
  double latitude;
  double longitude;
  int power;  // the size in degrees, as a power of ten
  int wallCount;
  bool onAxes;
};

std::ostream& operator<<(std::ostream& out, const Place& place) {
  return out << "place " << place.seed << " at " << place.latitude << ", " << place.longitude
             << " size 1e" << place.power << " walls " << place.wallCount
             << (place.onAxes ? " on the axes" : "");
}

Place anyPlace() {
  Place place;
  place.seed = *rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint32_t>());
  place.latitude = *rc::gen::element(-89.0, -85.0512, -84.9, -60.0, -33.0, -1e-4, 0.0, 0.5, 21.0,
                                     48.125, 52.5, 70.0, 80.0, 85.05, 85.1, 90.0);
  place.longitude = *rc::gen::element(-540.0, -180.0, -179.9999, 0.0, 11.5, 139.7, 180.0, 1000.0);
  place.power = *rc::gen::element(-9, -6, -5, -4, -3, -3, -2, -2, -1, 0, 1);
  place.wallCount = *rc::gen::inRange(1, 120);
  place.onAxes = *rc::gen::arbitrary<bool>();
  return place;
}

struct Wall {
  CLLocationCoordinate2D from;
  CLLocationCoordinate2D to;
};

// Draws the walls and lines of a place.
class LineSource {
 public:
  explicit LineSource(const Place& place)
      : place_(place), numbers_(place.seed), size_(std::pow(10.0, place.power)) {}

  Wall wall() {
    const CLLocationCoordinate2D from = coordinate();
    const CLLocationCoordinate2D to = moved(from, numbers_.chance(0.3) ? 1 : 0.1);
    if (!place_.onAxes) return {from, to};
    return numbers_.chance(0.5) ? Wall{from, {from.latitude, to.longitude}}
                                : Wall{from, {to.latitude, from.longitude}};
  }

  std::pair<CLLocationCoordinate2D, CLLocationCoordinate2D> line(const std::vector<Wall>& walls) {
    const Wall& wall = walls[numbers_.below(static_cast<std::uint32_t>(walls.size()))];
    const CLLocationCoordinate2D start = coordinate();
    switch (numbers_.below(8)) {
      case 0:
        return {start, numbers_.chance(0.5) ? wall.from : wall.to};
      case 1:
        return {start, along(wall, numbers_.unit())};
      case 2:
        return {start, nudged(along(wall, numbers_.unit()))};
      case 3:
        return {nudged(along(wall, 2 + numbers_.unit())), nudged(along(wall, -1))};
      case 4:
        return {along(wall, 1 + numbers_.unit()), along(wall, 2 + numbers_.unit())};
      case 5:
        return onAxis(start);
      case 6:
        return {moved(start, 5), numbers_.chance(0.1) ? unusual() : start};
      default:
        return {start, moved(start, numbers_.chance(0.5) ? 1 : 0.1)};
    }
  }

 private:
  double upTo(double reach) { return reach * (2 * numbers_.unit() - 1); }

  CLLocationCoordinate2D coordinate() { return moved({place_.latitude, place_.longitude}, 1); }

  CLLocationCoordinate2D moved(CLLocationCoordinate2D from, double parts) {
    return {from.latitude + upTo(parts * size_), from.longitude + upTo(parts * size_)};
  }

  // By some power of ten, down to the last digits.
  CLLocationCoordinate2D nudged(CLLocationCoordinate2D from) {
    return moved(from, std::pow(10.0, -1.0 - numbers_.below(14)));
  }

  static CLLocationCoordinate2D along(const Wall& wall, double part) {
    return {wall.from.latitude + (wall.to.latitude - wall.from.latitude) * part,
            wall.from.longitude + (wall.to.longitude - wall.from.longitude) * part};
  }

  std::pair<CLLocationCoordinate2D, CLLocationCoordinate2D> onAxis(CLLocationCoordinate2D start) {
    const CLLocationCoordinate2D end = moved(start, 1);
    if (numbers_.chance(0.5)) return {start, {start.latitude, end.longitude}};
    return {start, {end.latitude, start.longitude}};
  }

  CLLocationCoordinate2D unusual() {
    constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
    constexpr double kFar = std::numeric_limits<double>::infinity();
    const double value = numbers_.chance(0.5) ? kUnknown : numbers_.chance(0.5) ? kFar : -kFar;
    if (numbers_.chance(0.5)) return {value, place_.longitude};
    return {place_.latitude, value};
  }

  const Place& place_;
  SeededNumbers numbers_;
  double size_;
};

std::vector<WallEdge> edgesOf(const std::vector<Wall>& walls) {
  std::vector<WallEdge> edges;
  for (const Wall& wall : walls) {
    edges.push_back({MKMapPointForCoordinate(wall.from), MKMapPointForCoordinate(wall.to), 0});
  }
  return edges;
}

bool plainlyMeetsAny(const std::vector<WallEdge>& edges, CLLocationCoordinate2D from,
                     CLLocationCoordinate2D to) {
  const MKMapPoint a = MKMapPointForCoordinate(from);
  const MKMapPoint b = MKMapPointForCoordinate(to);
  return std::any_of(edges.begin(), edges.end(),
                     [&](const WallEdge& edge) { return segmentsMeet(a, b, edge.from, edge.to); });
}

RC_GTEST_PROP(WallEstimateProperties, AnswersBetweenCoordinatesAreThoseOfAPlainLoop, ()) {
  const auto places = *rc::gen::resize(
      rc::kNominalSize, rc::gen::container<std::vector<Place>>(25, rc::gen::exec(anyPlace)));
  std::size_t met = 0;
  for (const Place& place : places) {
    LineSource source(place);
    std::vector<Wall> walls;
    for (int i = 0; i < place.wallCount; ++i) walls.push_back(source.wall());
    const auto edges = edgesOf(walls);
    const WallGrid grid(edges);
    for (int i = 0; i < 40; ++i) {
      const auto [from, to] = source.line(walls);
      const bool expected = plainlyMeetsAny(edges, from, to);
      if (grid.meetsAnyBetween(from, to) != expected) {
        RC_LOG() << place << ", line " << i << "\n";
        RC_FAIL("the grid differs from the loop");
      }
      met += expected ? 1u : 0u;
    }
  }
  RC_TAG(met > 250 ? "more than a quarter met" : "fewer");
}

}  // namespace
}  // namespace KorvaniTest
