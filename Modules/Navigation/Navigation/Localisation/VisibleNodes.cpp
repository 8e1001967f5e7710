#include "Navigation/Localisation/VisibleNodes.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <utility>

namespace KorvaniNavigation {

namespace {

// How far is looked first, and at most, in sides of a cell: first as far as about seven nodes are.
// Found by measurement.
constexpr double kFirstReach = 1.5;
constexpr double kLastReach = 8.0;

// One look at the nodes close to a position, which nearly always suffices.
class NearbySearch {
 public:
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): candidates_ holds count_ of them
  NearbySearch(const NodeTree& tree, const WallGrid& walls, CLLocationCoordinate2D position)
      : tree_(tree),
        walls_(walls),
        position_(position),
        viewpoint_(KorvaniPlatform::MKMapPointForCoordinate(position)) {}

  // Absent when it would take long: far from all nodes, amid too many, or where walls stand close
  // around.
  std::optional<std::vector<std::uint32_t>> run();

 private:
  struct Candidate {
    double distance;
    const NodeCells::Entry* node;

    bool operator<(const Candidate& other) const {
      return distance < other.distance ||
             (distance == other.distance && node->index < other.node->index);
    }
  };

  static constexpr std::size_t kMostCandidates = 48;
  static constexpr double kNone = std::numeric_limits<double>::max();

  bool gather(double inner, double outer);
  void lookAtAll();
  bool isHidden(MKMapPoint point);

  const NodeTree& tree_;
  const WallGrid& walls_;
  CLLocationCoordinate2D position_;
  MKMapPoint viewpoint_;
  std::array<Candidate, kMostCandidates> candidates_;
  std::size_t count_ = 0;
  const WallGrid::Piece* lastWall_ = nullptr;
  double best_ = kNone;
  std::vector<std::uint32_t> visible_;
};

std::optional<std::vector<std::uint32_t>> NearbySearch::run() {
  if (!NodeTree::isOrdinary(position_) || tree_.countInBoxes() != tree_.nodes().size()) {
    return std::nullopt;
  }
  const double farthest = kLastReach * tree_.cells().side();
  double inner = -1;
  double outer = kFirstReach * tree_.cells().side();
  while (outer <= farthest) {
    if (!gather(inner, outer)) return std::nullopt;
    lookAtAll();
    if (kVisibleNodeReach * best_ <= outer) return std::move(visible_);
    inner = outer;
    outer = best_ == kNone ? 2 * outer : kVisibleNodeReach * best_;
  }
  return std::nullopt;
}

// Whether a node is in reach is hard to foresee, so no branch depends on it.
bool NearbySearch::gather(double inner, double outer) {
  count_ = 0;
  bool fits = true;
  tree_.cells().around(position_, outer, [&](const auto* entry, const auto* last) {
    fits = static_cast<std::size_t>(last - entry) <= kMostCandidates - count_;
    if (!fits) return false;
    for (; entry != last; ++entry) {
      const double distance = degreeDistance(position_, entry->coordinate);
      candidates_[count_] = {distance, entry};
      count_ += static_cast<std::size_t>((distance > inner) & (distance <= outer));
    }
    return true;
  });
  std::sort(candidates_.begin(), candidates_.begin() + static_cast<std::ptrdiff_t>(count_));
  return fits;
}

void NearbySearch::lookAtAll() {
  for (std::size_t i = 0; i < count_; ++i) {
    const auto& [distance, node] = candidates_[i];
    if (best_ != kNone && distance > kVisibleNodeReach * best_) return;
    if (isHidden(node->point)) continue;
    best_ = std::min(best_, distance);
    visible_.push_back(node->index);
  }
}

bool NearbySearch::isHidden(MKMapPoint point) {
  if (lastWall_ && segmentsMeet(viewpoint_, point, lastWall_->from, lastWall_->to)) return true;
  const WallGrid::Piece* wall = walls_.firstMet(viewpoint_, point);
  if (wall == nullptr) return false;
  lastWall_ = wall;
  return true;
}

}  // namespace

std::vector<std::uint32_t> visibleNodes(const NodeTree& nodes, const WallGrid& walls,
                                        CLLocationCoordinate2D position) {
  auto visible = NearbySearch(nodes, walls, position).run();
  return visible ? std::move(*visible) : visibleNodesByBoxes(nodes, walls, position);
}

}  // namespace KorvaniNavigation
