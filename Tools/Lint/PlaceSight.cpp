#include "Lint/PlaceSight.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "Building/BuildingGraph.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Platform/Location.hpp"

namespace KorvaniTools {

using KorvaniNavigation::IntersectionFinder;
using KorvaniNavigation::KRVNavEdge;
using KorvaniPlatform::greatCircleDistance;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;

namespace {

// The engine's own limits (Localisation/PositionMapper.cpp); a test compares the two.
constexpr double kVisibleNodeReach = 2.5;
constexpr double kDetourFactor = 1.2;
constexpr double kFarNodeDistance = 10.0;
constexpr double kArrivalReach = 1.2;
constexpr std::size_t kArrivalNodes = 4;

double degreeDistance(Coordinate a, Coordinate b) {
  const double latitude = a.latitude - b.latitude;
  const double longitude = a.longitude - b.longitude;
  return std::sqrt(latitude * latitude + longitude * longitude);
}

/// A node near a position, by index, with its distance in metres.
struct NearNode {
  std::size_t node;
  double distance;
};

NodeIndexes arrivalNodes(const std::vector<NearNode>& near) {
  NodeIndexes nodes;
  if (near.empty()) return nodes;
  const double nearest = near.front().distance;
  nodes.push_back(near.front().node);
  if (nearest > kFarNodeDistance) return nodes;
  for (std::size_t i = 1; i < near.size() && nodes.size() < kArrivalNodes; ++i) {
    if (near[i].distance <= nearest * kArrivalReach) nodes.push_back(near[i].node);
  }
  return nodes;
}

}  // namespace

/// What one region has.
struct PlaceSight::Region {
  NodeIndexes nodes;
  WallIndex walls;
};

/// Whether walls of a region stand between one position and other spots.
///
/// What hides one spot mostly hides its neighbours, so walls that were met are tried first: a room
/// without a door is found closed by its own few walls.
class PlaceSight::Line {
 public:
  explicit Line(const WallIndex& walls) : walls_(walls) {}

  bool isBlocked(MapPoint a, MapPoint b) {
    for (auto wall = met_.begin(); wall != met_.end(); ++wall) {
      if (!whereLineMeets(a, b, walls_.pieces()[*wall])) continue;
      std::rotate(met_.begin(), wall, wall + 1);
      return true;
    }
    const auto wall = walls_.anyMet(a, b);
    if (!wall) return false;
    if (met_.size() == kRemembered) met_.pop_back();
    met_.insert(met_.begin(), *wall);
    return true;
  }

 private:
  static constexpr std::size_t kRemembered = 32;

  const WallIndex& walls_;
  std::vector<std::size_t> met_;  ///< latest first
};

PlaceSight::PlaceSight(const Building& building)
    : building_(building),
      graph_(makeGraph(building)),
      indexes_(nodeIndexes(building)),
      finder_(std::make_shared<KorvaniNavigation::RegionFinder>(
          std::weak_ptr<KorvaniNavigation::ConfigDependents>())) {
  finder_->setRegions(std::as_const(*graph_).regions());
}

PlaceSight::~PlaceSight() = default;

std::size_t PlaceSight::regionFor(Coordinate position, std::int64_t level) const {
  const auto region = finder_->findRegionFor(position, level, true);
  const auto& regions = std::as_const(*graph_).regions();
  return static_cast<std::size_t>(std::find(regions.begin(), regions.end(), region) -
                                  regions.begin());
}

const PlaceSight::Region& PlaceSight::regionAt(std::size_t index) {
  std::unique_ptr<Region>& region = regions_[index];
  if (region) return *region;
  NodeIndexes nodes;
  for (std::size_t i = 0; i < building_.nodes.size(); ++i) {
    if (building_.nodes[i].region == index) nodes.push_back(i);
  }
  const auto isHere = [index](const BuildingObstacle&, const ObstacleLine& line) {
    return std::binary_search(line.regions.begin(), line.regions.end(), index);
  };
  WallIndex walls(wallPieces(building_, isHere));
  region = std::make_unique<Region>(Region{std::move(nodes), std::move(walls)});
  return *region;
}

namespace {

/// The nodes of a region in the order of their distance in degrees, one by one: mostly only the
/// first few are asked for. Of equals the earlier one comes first.
class NodesByDistance {
 public:
  struct Entry {
    double distance;
    std::size_t place;  ///< in the region's order
    std::size_t node;
  };

  NodesByDistance(const Building& building, const NodeIndexes& nodes, Coordinate position) {
    entries_.reserve(nodes.size());
    for (const std::size_t node : nodes) {
      entries_.push_back(
          {degreeDistance(position, building.nodes[node].coordinate), entries_.size(), node});
    }
    std::make_heap(entries_.begin(), entries_.end(), later);
  }

  std::optional<Entry> next() {
    if (entries_.empty()) return {};
    std::pop_heap(entries_.begin(), entries_.end(), later);
    const Entry entry = entries_.back();
    entries_.pop_back();
    return entry;
  }

 private:
  static bool later(const Entry& a, const Entry& b) {
    return a.distance > b.distance || (a.distance == b.distance && a.place > b.place);
  }

  std::vector<Entry> entries_;
};

}  // namespace

/// Finds nodes and feet around one position.
class PlaceSight::Search {
 public:
  Search(const PlaceSight& sight, const Region& region, Coordinate position)
      : sight_(sight),
        region_(region),
        line_(region.walls),
        position_(position),
        point_(MKMapPointForCoordinate(position)) {}

  PlaceNodes nodes() {
    const std::vector<NearNode> near = nodesInSight();
    return {arrivalNodes(near), departureNodes(near)};
  }

 private:
  const BuildingNode& node(std::size_t index) const { return sight_.building_.nodes[index]; }

  std::vector<NearNode> nodesInSight() {
    std::vector<NearNode> near;
    NodesByDistance nodes(sight_.building_, region_.nodes, position_);
    std::optional<double> nearest;
    while (const auto entry = nodes.next()) {
      if (nearest && entry->distance > kVisibleNodeReach * *nearest) break;
      const Coordinate coordinate = node(entry->node).coordinate;
      if (line_.isBlocked(point_, MKMapPointForCoordinate(coordinate))) continue;
      if (!nearest) nearest = entry->distance;
      near.push_back({entry->node, greatCircleDistance(coordinate, position_)});
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& a, const auto& b) { return a.distance < b.distance; });
    return near;
  }

  NodeIndexes departureNodes(const std::vector<NearNode>& near) {
    if (near.empty()) return {};
    NodeIndexes best{near.front().node};
    double shortest = near.front().distance;
    for (const NearNode& candidate : near) {
      const auto* edges = std::as_const(*sight_.graph_).edges().find(node(candidate.node).id);
      if (edges == nullptr) continue;
      for (const auto& [id, edge] : *edges) {
        const std::size_t far = sight_.indexes_.at(id);
        if (node(far).level != node(candidate.node).level) continue;
        if (!passesDetourTests(candidate, far, *edge)) continue;
        const auto distance = distanceOfFoot(candidate.node, far);
        if (!distance || !(*distance < shortest)) continue;
        shortest = *distance;
        best = {candidate.node, far};
      }
    }
    return best;
  }

  bool passesDetourTests(const NearNode& candidate, std::size_t far, const KRVNavEdge& edge) const {
    const Coordinate one = node(candidate.node).coordinate;
    const Coordinate two = node(far).coordinate;
    const double toNode = degreeDistance(position_, one);
    const double detour =
        degreeDistance(one, position_) + degreeDistance(position_, two) - degreeDistance(one, two);
    if (detour > kVisibleNodeReach * toNode) return false;
    const double toFar = greatCircleDistance(two, position_);
    return !(candidate.distance * kDetourFactor <= candidate.distance + toFar - edge.distance());
  }

  /// Metres to the foot of the position on the edge between two nodes; none when it lies beyond
  /// them or behind a wall.
  std::optional<double> distanceOfFoot(std::size_t nodeOne, std::size_t nodeTwo) {
    const Coordinate one = node(nodeOne).coordinate;
    const Coordinate two = node(nodeTwo).coordinate;
    const Coordinate foot =
        MKCoordinateForMapPoint(IntersectionFinder::findIntersectionPointForPointOnLine(
            point_, MKMapPointForCoordinate(one), MKMapPointForCoordinate(two)));
    if (!IntersectionFinder::coordinateIsBetweenCoordinates(foot, one, two)) return {};
    if (line_.isBlocked(MKMapPointForCoordinate(foot), point_)) return {};
    return greatCircleDistance(foot, position_);
  }

  const PlaceSight& sight_;
  const Region& region_;
  Line line_;
  Coordinate position_;
  MapPoint point_;
};

PlaceNodes PlaceSight::nodesFor(Coordinate position, std::int64_t level) {
  const Region& region = regionAt(regionFor(position, level));
  return Search(*this, region, position).nodes();
}

}  // namespace KorvaniTools
