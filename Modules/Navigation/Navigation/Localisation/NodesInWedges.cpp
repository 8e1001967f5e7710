#include "Navigation/Localisation/NodesInWedges.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace KorvaniNavigation {

namespace {

// To go along wedges takes as long for so many cells as to sort a node by direction. Found by
// measurement.
constexpr double kCellsANode = 0.2;

// Directions from a place, in equal parts of a measure that grows with the angle. In single
// precision it is wrong by less than a tenth of a part.
class Compass {
 public:
  static constexpr std::size_t kParts = std::size_t{1} << 18U;

  Compass() : marks_(kParts / 64 + 1) {}

  // Without branches, so that several are computed at once.
  static std::int32_t partOf(float x, float y) {
    constexpr float kTiny = 1e-30F;
    const float part = y / (std::abs(x) + std::abs(y) + kTiny);
    const float isLeft = x < 0 ? 1.0F : 0.0F;
    const float isBelow = y < 0 ? 1.0F : 0.0F;
    const float measure =
        part * (1.0F - 2.0F * isLeft) + 2.0F * isLeft + 4.0F * isBelow * (1.0F - isLeft);
    return static_cast<std::int32_t>(measure * (kParts / 4.0F));
  }

  void mark(const Wedge& wedge) {
    const std::size_t first = partOf(wedge.from()) + kParts - 1;
    const std::size_t last = partOf(wedge.to()) + kParts + 1;
    const std::size_t end = last < first ? last + kParts : last;
    for (std::size_t part = first; part <= end; ++part) mark(part % kParts);
    if (first % kParts > end % kParts) mark(kParts);
  }

  bool isMarked(std::int32_t part) const {
    const auto place = static_cast<std::size_t>(part);
    return (marks_[place / 64] >> place % 64 & 1U) != 0;
  }

 private:
  static std::size_t partOf(MKMapPoint direction) {
    return static_cast<std::size_t>(
        partOf(static_cast<float>(direction.x), static_cast<float>(direction.y)));
  }
  void mark(std::size_t part) { marks_[part / 64] |= std::uint64_t{1} << part % 64; }

  std::vector<std::uint64_t> marks_;  // a bit each; the last is that of a full turn
};

}  // namespace

NodesInWedges::NodesInWedges(const NodeTree& tree, MKMapPoint tip) : tree_(tree), tip_(tip) {
  const NodeCells& cells = tree.cells();
  mostCells_ = std::min(cells.distanceToFarthest(tip), cells.distanceAcross()) / cells.sideAcross();
}

void NodesInWedges::add(const Wedge& wedge) {
  wedges_.push_back(wedge);
  cellCount_ += std::min(wedge.length() / tree_.cells().sideAcross(), mostCells_);
}

bool NodesInWedges::areMany() const {
  return cellCount_ > kCellsANode * static_cast<double>(tree_.countInBoxes());
}

std::vector<std::uint32_t> NodesInWedges::take(double reach) {
  Places found;
  const std::vector<Wedge> wedges = std::exchange(wedges_, {});
  cellCount_ = 0;
  for (const Wedge& wedge : wedges) add(wedge.upTo(reach));
  if (areMany()) {
    findBySorting(found);
  } else {
    for (const Wedge& wedge : wedges_) {
      if (tree_.cells().isEven()) {
        findByCells(wedge, found);
      } else {
        findByBoxes(wedge, static_cast<std::uint32_t>(tree_.boxes().size() - 1), found);
      }
    }
  }
  wedges_.clear();
  cellCount_ = 0;
  return found;
}

void NodesInWedges::findBySorting(Places& found) const {
  Compass compass;
  for (const Wedge& wedge : wedges_) compass.mark(wedge);
  constexpr std::uint32_t kAtOnce = 64;
  std::array<float, kAtOnce> x{};
  std::array<float, kAtOnce> y{};
  std::array<std::int32_t, kAtOnce> part{};
  for (std::uint32_t first = 0; first < tree_.countInBoxes(); first += kAtOnce) {
    const MKMapPoint* points = &tree_.points()[first];
    const std::uint32_t count = std::min(kAtOnce, tree_.countInBoxes() - first);
    for (std::uint32_t i = 0; i < count; ++i) {
      x[i] = static_cast<float>(points[i].x - tip_.x);
      y[i] = static_cast<float>(points[i].y - tip_.y);
    }
    for (std::uint32_t i = 0; i < kAtOnce; ++i) part[i] = Compass::partOf(x[i], y[i]);
    for (std::uint32_t i = 0; i < count; ++i) {
      if (compass.isMarked(part[i])) found.push_back(first + i);
    }
  }
}

void NodesInWedges::findByCells(const Wedge& wedge, Places& found) const {
  const auto visit = [&](const NodeCells::Entry* node, const NodeCells::Entry* last) {
    for (; node != last; ++node) {
      if (wedge.reaches(node->point)) found.push_back(node->place);
    }
  };
  tree_.cells().along(wedge, visit);
}

void NodesInWedges::findByBoxes(const Wedge& wedge, std::uint32_t box, Places& found) const {
  const NodeTree::Box& parts = tree_.boxes()[box];
  for (std::uint32_t i = parts.first; i < parts.first + parts.count; ++i) {
    if (!tree_.isLeaf(box)) {
      const NodeTree::Box& part = tree_.boxes()[i];
      if (wedge.reachesInto(part.low, part.high)) findByBoxes(wedge, i, found);
    } else if (wedge.reaches(tree_.points()[i])) {
      found.push_back(i);
    }
  }
}

}  // namespace KorvaniNavigation
