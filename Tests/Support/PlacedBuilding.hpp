#pragma once

/// A building for tests whose nodes and walls are placed in metres, where a drawing is too coarse.
///
///     PlacedBuilding building;
///     const auto door = building.node(0, 0);         // at the origin
///     const auto desk = building.node(4.5, 0.25);    // 4.5 m north, 0.25 m east of it
///     building.join(door, desk);
///     building.wall(2, -1, 2, 1);
///     provide(building.graph());
///
/// Level 0 is there from the start, others come with their first node or wall. Each level is one
/// region, whose rectangle reaches 1000 m from the origin on all sides. Identifiers are 1, 2, ...
/// in the order of the nodes. See TextBuilding for buildings that are drawn.

#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {

class PlacedBuilding {
 public:
  using RegionPtr = std::shared_ptr<KorvaniNavigation::KRVNavRegion>;

  explicit PlacedBuilding(CLLocationCoordinate2D origin = kOrigin) : origin_(origin) {
    static_cast<void>(region(0));
  }

  CLLocationCoordinate2D place(double north, double east) const {
    return moved(origin_, north, east);
  }

  /// A position: a point that is no node.
  PointPtr position(double north, double east, std::int64_t level = 0) const {
    return at(place(north, east), level);
  }

  PointPtr node(CLLocationCoordinate2D coordinate, std::int64_t level = 0) {
    auto point = at(coordinate, level, ++lastIdentifier_);
    region(level)->addNode(point);
    return point;
  }

  PointPtr node(double north, double east, std::int64_t level = 0) {
    return node(place(north, east), level);
  }

  /// Edges both ways, as long as the ground between the nodes unless a length is given.
  void join(const PointPtr& a, const PointPtr& b, std::optional<double> distance = {}) {
    joinOneWay(a, b, distance);
    joinOneWay(b, a, distance);
  }

  std::shared_ptr<KorvaniNavigation::KRVNavEdge> joinOneWay(const PointPtr& from,
                                                            const PointPtr& to,
                                                            std::optional<double> distance = {}) {
    const double length =
        distance.value_or(greatCircleDistance(from->coordinate(), to->coordinate()));
    auto edge = std::make_shared<KorvaniNavigation::KRVNavEdge>(from, to, length, 1.0, true);
    graph_->addEdge(edge, *from, *to);
    return edge;
  }

  /// A straight wall.
  std::shared_ptr<KorvaniNavigation::KRVNavObstacle> wall(double fromNorth, double fromEast,
                                                          double toNorth, double toEast,
                                                          std::int64_t level = 0) {
    const std::vector<CLLocationCoordinate2D> ends{place(fromNorth, fromEast),
                                                   place(toNorth, toEast)};
    auto obstacle = std::make_shared<KorvaniNavigation::KRVNavObstacle>(ends);
    region(level)->addObstacle(obstacle);
    return obstacle;
  }

  const RegionPtr& region(std::int64_t level) {
    auto& region = regions_[level];
    if (!region) {
      region = std::make_shared<KorvaniNavigation::KRVNavRegion>(level);
      region->setNorthEastCoordinate(place(1000, 1000));
      region->setSouthWestCoordinate(place(-1000, -1000));
      graph_->add(region);
    }
    return region;
  }

  const std::shared_ptr<KorvaniNavigation::KRVNavGraph>& graph() const { return graph_; }

 private:
  CLLocationCoordinate2D origin_;
  std::shared_ptr<KorvaniNavigation::KRVNavGraph> graph_ =
      std::make_shared<KorvaniNavigation::KRVNavGraph>();
  std::map<std::int64_t, RegionPtr> regions_;
  std::int64_t lastIdentifier_ = 0;
};

/// A coordinate north of (0, 0) whose great-circle distance from there is `metres` to the last bit,
/// for tests of exact limits. Near the equator doubles lie densely enough for it; where no latitude
/// will do, the coordinate lies a hair to the east.
inline CLLocationCoordinate2D exactlyNorthOfNull(double metres) {
  for (int hairs = 0; hairs < 30; ++hairs) {
    CLLocationCoordinate2D place{degreesOf(metres), hairs * 1e-13};
    for (int i = 0; i < 20; ++i) place.latitude = std::nextafter(place.latitude, 0);
    for (int i = 0; i < 40; ++i) {
      if (KorvaniPlatform::greatCircleDistance({0, 0}, place) == metres) return place;
      place.latitude = std::nextafter(place.latitude, 90);
    }
  }
  throw std::invalid_argument("nothing is exactly " + std::to_string(metres) + " m away");
}

}  // namespace KorvaniTest
