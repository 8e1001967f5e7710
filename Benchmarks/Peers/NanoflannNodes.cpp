#include "Peers/NanoflannNodes.hpp"

#include <algorithm>
#include <cmath>
#include <nanoflann.hpp>
#include <optional>
#include <utility>

#include "Buildings/PeerData.hpp"

namespace KorvaniBenchmarks {

namespace {

/// The nodes of a level as nanoflann reads them.
struct Cloud {
  std::vector<std::uint32_t> nodes;
  std::vector<Coordinate> places;
  std::vector<PlanePoint> planePlaces;

  std::size_t kdtree_get_point_count() const { return places.size(); }
  double kdtree_get_pt(std::size_t index, std::size_t dimension) const {
    return dimension == 0 ? places[index].latitude : places[index].longitude;
  }
  template <class Box>
  bool kdtree_get_bbox(Box& /*box*/) const {
    return false;
  }
};

Cloud cloudOf(const PlainBuilding& building, std::int64_t level) {
  Cloud cloud;
  for (std::uint32_t node = 0; node < building.nodes.size(); ++node) {
    if (building.nodes[node].level != level) continue;
    const Coordinate place = building.nodes[node].coordinate;
    cloud.nodes.push_back(node);
    cloud.places.push_back(place);
    cloud.planePlaces.push_back(KorvaniPlatform::MKMapPointForCoordinate(place));
  }
  return cloud;
}

using KdTree =
    nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud, 2>;

constexpr std::size_t kLeafSize = 10;

}  // namespace

struct NanoflannNodes::Tree {
  Cloud cloud;
  KdTree tree;
  GeosWalls walls;

  Tree(const PlainBuilding& building, std::int64_t level)
      : cloud(cloudOf(building, level)),
        tree(2, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(kLeafSize)),
        walls(planeLinesOf(building, level)) {
    tree.buildIndex();
  }

  bool sees(PlanePoint position, std::size_t index) const {
    return !walls.meet({position, cloud.planePlaces[index]});
  }

  /// The square of the distance of the nearest node in sight: ever more of the nearest nodes are
  /// asked for until one is.
  std::optional<double> nearestInSight(const double (&place)[2], PlanePoint position) const {
    std::vector<std::uint32_t> indexes;
    std::vector<double> squares;
    std::size_t looked = 0;
    for (std::size_t count = 8; looked < cloud.places.size(); count *= 4) {
      indexes.resize(count);
      squares.resize(count);
      const std::size_t found = tree.knnSearch(place, count, indexes.data(), squares.data());
      for (; looked < found; ++looked) {
        if (sees(position, indexes[looked])) return squares[looked];
      }
    }
    return std::nullopt;
  }
};

NanoflannNodes::NanoflannNodes(const PlainBuilding& building, std::int64_t level)
    : tree_(std::make_unique<Tree>(building, level)) {}

NanoflannNodes::~NanoflannNodes() = default;

std::vector<VisibleNode> NanoflannNodes::inSightOf(Coordinate position) const {
  std::vector<VisibleNode> visible;
  const double place[2] = {position.latitude, position.longitude};
  const PlanePoint onPlane = KorvaniPlatform::MKMapPointForCoordinate(position);
  const std::optional<double> nearest = tree_->nearestInSight(place, onPlane);
  if (!nearest) return visible;
  const double reach = kReach * std::sqrt(*nearest);
  std::vector<std::pair<std::uint32_t, double>> near;
  // A little more is asked for, since squares are rounded; the exact test follows.
  constexpr double kReserve = 1 + 1e-12;
  tree_->tree.radiusSearch(place, reach * reach * kReserve, near, nanoflann::SearchParams());
  for (const auto& [index, square] : near) {
    if (square < *nearest || std::sqrt(square) > reach) continue;
    if (square > *nearest && !tree_->sees(onPlane, index)) continue;
    visible.push_back({tree_->cloud.nodes[index],
                       KorvaniPlatform::greatCircleDistance(tree_->cloud.places[index], position)});
  }
  std::stable_sort(visible.begin(), visible.end(), [](const VisibleNode& a, const VisibleNode& b) {
    return a.distance < b.distance;
  });
  return visible;
}

}  // namespace KorvaniBenchmarks
