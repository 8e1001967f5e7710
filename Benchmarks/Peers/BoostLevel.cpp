#include "Peers/BoostLevel.hpp"

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <limits>
#include <utility>

#include "Buildings/PeerData.hpp"
#include "Peers/Measures.hpp"

namespace KorvaniBenchmarks {

namespace {

namespace geometry = boost::geometry;

using NodePoint = geometry::model::d2::point_xy<double>;
using NodeEntry = std::pair<NodePoint, std::uint32_t>;
using NodeTree = geometry::index::rtree<NodeEntry, geometry::index::rstar<8>>;

std::vector<NodeEntry> entriesOf(const PlainBuilding& building, std::int64_t level) {
  std::vector<NodeEntry> entries;
  for (std::uint32_t node = 0; node < building.nodes.size(); ++node) {
    if (building.nodes[node].level != level) continue;
    const Coordinate place = building.nodes[node].coordinate;
    entries.emplace_back(NodePoint(place.latitude, place.longitude), node);
  }
  return entries;
}

}  // namespace

struct BoostLevel::Tree {
  Tree(const PlainBuilding& building, std::int64_t level) : nodes(entriesOf(building, level)) {}

  NodeTree nodes;
};

BoostLevel::BoostLevel(const PlainBuilding& building, std::int64_t level)
    : tree_(std::make_unique<Tree>(building, level)), walls_(planeLinesOf(building, level)) {}

BoostLevel::~BoostLevel() = default;

std::vector<VisibleNode> BoostLevel::inSightOf(Coordinate position) const {
  std::vector<VisibleNode> visible;
  const PlanePoint onPlane = KorvaniPlatform::MKMapPointForCoordinate(position);
  const auto nearestFirst = geometry::index::nearest(
      NodePoint(position.latitude, position.longitude), static_cast<unsigned>(tree_->nodes.size()));
  double reach = std::numeric_limits<double>::infinity();
  for (auto entry = tree_->nodes.qbegin(nearestFirst); entry != tree_->nodes.qend(); ++entry) {
    const Coordinate place{entry->first.x(), entry->first.y()};
    const double degrees = degreeDistance(position, place);
    if (degrees > reach) break;
    if (walls_.meet({onPlane, KorvaniPlatform::MKMapPointForCoordinate(place)})) continue;
    if (visible.empty()) reach = kReach * degrees;
    visible.push_back({entry->second, KorvaniPlatform::greatCircleDistance(place, position)});
  }
  std::stable_sort(visible.begin(), visible.end(), [](const VisibleNode& a, const VisibleNode& b) {
    return a.distance < b.distance;
  });
  return visible;
}

}  // namespace KorvaniBenchmarks
