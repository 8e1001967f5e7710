#include "Peers/BoostWalls.hpp"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/segment.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <cstddef>

namespace KorvaniBenchmarks {

namespace {

namespace geometry = boost::geometry;

using TreePoint = geometry::model::d2::point_xy<double>;
using TreeSegment = geometry::model::segment<TreePoint>;

TreeSegment treeSegment(PlanePoint a, PlanePoint b) { return {{a.x, a.y}, {b.x, b.y}}; }

std::vector<TreeSegment> segmentsOf(const PlaneLines& lines) {
  std::vector<TreeSegment> segments;
  for (const auto& line : lines) {
    for (std::size_t i = 1; i < line.size(); ++i) {
      segments.push_back(treeSegment(line[i - 1], line[i]));
    }
  }
  return segments;
}

}  // namespace

// Of the tree's parameters and ways to ask, these are the quickest for such walls.
struct BoostWalls::Tree {
  explicit Tree(const PlaneLines& lines) : segments(segmentsOf(lines)) {}

  geometry::index::rtree<TreeSegment, geometry::index::rstar<8>> segments;
};

BoostWalls::BoostWalls(const PlaneLines& walls) : tree_(std::make_unique<Tree>(walls)) {}

BoostWalls::~BoostWalls() = default;

bool BoostWalls::meet(const PlaneSegment& line) const {
  const auto asked = geometry::index::intersects(treeSegment(line.a, line.b));
  return tree_->segments.qbegin(asked) != tree_->segments.qend();
}

}  // namespace KorvaniBenchmarks
