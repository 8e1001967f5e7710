#include "FloorPlan/DoorSides.hpp"

#include <algorithm>
#include <map>

namespace KorvaniTools {
namespace {

constexpr double kOnSpot = 0.02;  // metres from a door to an outline that it is drawn on
constexpr double kNoWall =
    kThickestWall + 0.01;           // metres from a door without wall to the floors it joins
constexpr double kProbe = 0.3;      // metres
constexpr double kOpenReach = 1.0;  // metres to floor that no wall stands around
constexpr double kTouching = 0.08;  // metres; within what sight allows for digitising
constexpr double kEntry = 0.1;      // metres behind a thick wall
constexpr double kLeastEntry = 0.01;

GroundPoint moved(GroundPoint at, GroundPoint direction, double metres) {
  return {at.x + direction.x * metres, at.y + direction.y * metres};
}

double along(GroundPoint from, GroundPoint to, GroundPoint direction) {
  return (to.x - from.x) * direction.x + (to.y - from.y) * direction.y;
}

}  // namespace

DoorSides::DoorSides(const std::vector<FloorSpace>& spaces, const SpaceFinder& finder,
                     const Geos& geos)
    : spaces_(spaces), finder_(finder), geos_(geos) {}

std::vector<DoorSide> DoorSides::of(const FloorDoor& door) const {
  std::map<std::size_t, DoorSide> sides;
  if (door.along) {
    for (const double side : {1.0, -1.0}) {
      const GroundPoint direction{-side * door.along->y, side * door.along->x};
      if (const auto found = straight(door, direction)) sides.emplace(found->space, *found);
    }
  }
  if (sides.size() < 2) {
    for (const std::size_t space : finder_.near(door.at, door.along ? kOnSpot : kNoWall)) {
      sides.emplace(space, beside(door.at, space));
    }
  }
  std::vector<DoorSide> result;
  result.reserve(sides.size());
  for (const auto& [space, side] : sides) result.push_back(side);
  return result;
}

std::optional<DoorSide> DoorSides::straight(const FloorDoor& door, GroundPoint direction) const {
  for (const double away : {kProbe, kThickestWall, kOpenReach}) {
    const auto space = finder_.spaceAt(moved(door.at, direction, away));
    if (!space) continue;
    if (away > kThickestWall && spaces_[*space].cell) break;
    const Shape ray = geos_.segment(door.at, moved(door.at, direction, away));
    const auto nearest =
        geos_.nearest(geos_.point(door.at), geos_.common(ray, spaces_[*space].shape));
    return nearest ? enter(door.at, nearest->second, *space) : DoorSide{*space, std::nullopt};
  }
  return std::nullopt;
}

DoorSide DoorSides::beside(GroundPoint at, std::size_t space) const {
  const auto nearest = geos_.nearest(geos_.point(at), spaces_[space].shape);
  return nearest ? enter(at, nearest->second, space) : DoorSide{space, std::nullopt};
}

DoorSide DoorSides::enter(GroundPoint at, GroundPoint edge, std::size_t space) const {
  const double distance = groundDistance(at, edge);
  if (distance <= kTouching) return {space, std::nullopt};
  const GroundPoint direction{(edge.x - at.x) / distance, (edge.y - at.y) / distance};
  const GroundPoint entry = moved(edge, direction, kEntry);
  const bool roomy = geos_.intersects(geos_.point(entry), spaces_[space].shape);
  return {space, roomy ? entry : moved(edge, direction, kLeastEntry)};
}

void DoorSides::deepen(FloorDoor& door, const std::vector<DoorSide>& sides) const {
  if (!door.gap || !door.along) return;
  std::vector<Shape> gaps;
  for (const DoorSide& side : sides) {
    if (side.entry && groundDistance(door.at, *side.entry) <= kThickestWall + kEntry) {
      gaps.push_back(through(door, *side.entry));
    }
  }
  if (gaps.empty()) return;
  gaps.push_back(std::move(door.gap));
  door.gap = geos_.united(std::move(gaps));
}

// As wide as the gap that is there already.
Shape DoorSides::through(const FloorDoor& door, GroundPoint entry) const {
  double low = 0;
  double high = 0;
  for (const Shape& polygon : geos_.polygonsOf(door.gap)) {
    const GroundLine outline = geos_.ringsOf(polygon).front();
    for (const GroundPoint& corner : outline) {
      low = std::min(low, along(door.at, corner, *door.along));
      high = std::max(high, along(door.at, corner, *door.along));
    }
  }
  const GroundPoint a = moved(door.at, *door.along, low);
  const GroundPoint b = moved(door.at, *door.along, high);
  const GroundPoint in{entry.x - door.at.x, entry.y - door.at.y};
  return geos_.polygon({{a, b, moved(b, in, 1), moved(a, in, 1)}}).shape;
}

}  // namespace KorvaniTools
