#include "Navigation/Localisation/VisibleNodesByBoxes.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "Navigation/Localisation/NodesInWedges.hpp"
#include "Navigation/Localisation/WallShadows.hpp"
#include "Navigation/Localisation/Wedge.hpp"

namespace KorvaniNavigation {

namespace {

// Most positions see a node before so many boxes are open. Up to then, to ask for shadows costs
// more than they save: up to a tenth of the time of such a search.
constexpr std::uint32_t kFewBoxes = 16;
// Gaps between shadows are seen to apart, so that the area behind can be passed over, where they
// are no wider than so much of a cell of nodes at the far end of the level: few nodes are in them
// then.
constexpr double kWidestGap = 0.05;
// In the measure of directions: no wedge is wider, whatever the level.
constexpr double kWidestWedge = 0.1;

// How far behind a corner another wall is looked for: as a multiple of the corner's distance, and
// in cells of nodes. To look farther takes longer than to look at the nodes up to there.
constexpr double kLongestWayToLid = 20.0;
constexpr double kCellsToLid = 40.0;

// One walk outwards from a position.
class VisibleNodeSearch {
 public:
  VisibleNodeSearch(const NodeTree& tree, const WallGrid& walls, CLLocationCoordinate2D position)
      : tree_(tree),
        walls_(walls),
        position_(position),
        viewpoint_(KorvaniPlatform::MKMapPointForCoordinate(position)),
        shadows_(viewpoint_),
        wedges_(tree, viewpoint_) {}

  std::vector<std::uint32_t> run();

 private:
  // A box, or a node whose box is open. Of equal distances boxes come first, for they may hold a
  // node of that distance that was inserted earlier.
  struct Candidate {
    double distance;
    std::uint32_t rank;  // 0 for a box, 1 more than its index for a node
    std::uint32_t place;

    bool operator<(const Candidate& other) const {  // for heaps, whose greatest comes first
      return distance > other.distance || (distance == other.distance && rank > other.rank);
    }
  };

  static constexpr double kNone = std::numeric_limits<double>::max();

  bool isBeyondReach(double distance) const {
    return best_ != kNone && distance > kVisibleNodeReach * best_;
  }

  void put(Candidate candidate);
  void putNode(std::uint32_t place);
  void begin();
  void open(const Candidate& candidate);
  bool passesOver(const NodeTree::Box& box);
  Wedge openPartOf(const WallShadows::Gap& gap) const;
  bool putNodesInWedges();
  double planeReach() const;
  void search();
  void settle();
  void lookAt(const Candidate& candidate);

  const NodeTree& tree_;
  const WallGrid& walls_;
  CLLocationCoordinate2D position_;
  MKMapPoint viewpoint_;
  WallShadows shadows_;
  std::vector<Candidate> heap_;
  std::vector<Candidate> unknown_;  // nodes of a distance that is no number
  std::vector<WallShadows::Gap> gaps_;
  double widestGap_ = 0;
  NodesInWedges wedges_;  // what is left open of boxes passed over
  std::vector<Candidate> visible_;
  double best_ = kNone;
  std::uint32_t openedCount_ = 0;
  bool usesBoxes_ = false;
};

void VisibleNodeSearch::put(Candidate candidate) {
  if (isBeyondReach(candidate.distance)) return;
  heap_.push_back(candidate);
  std::push_heap(heap_.begin(), heap_.end());
}

void VisibleNodeSearch::putNode(std::uint32_t place) {
  const NodeTree::Node& node = tree_.nodes()[place];
  const Candidate candidate{degreeDistance(position_, node.coordinate), node.index + 1, place};
  if (std::isnan(candidate.distance)) {
    unknown_.push_back(candidate);
  } else {
    put(candidate);
  }
}

void VisibleNodeSearch::begin() {
  usesBoxes_ = NodeTree::isOrdinary(position_) && !tree_.boxes().empty();
  heap_.reserve(256);
  const NodeCells& cells = tree_.cells();
  const double farCell = cells.sideAcross() / cells.distanceToFarthest(viewpoint_);
  widestGap_ = std::min(kWidestGap * farCell, kWidestWedge);
  if (usesBoxes_) put({0, 0, static_cast<std::uint32_t>(tree_.boxes().size() - 1)});
  const auto count = static_cast<std::uint32_t>(tree_.nodes().size());
  for (std::uint32_t i = usesBoxes_ ? tree_.countInBoxes() : 0; i < count; ++i) putNode(i);
  std::sort(unknown_.begin(), unknown_.end(),
            [](const Candidate& a, const Candidate& b) { return a.rank < b.rank; });
}

std::vector<std::uint32_t> VisibleNodeSearch::run() {
  begin();
  search();
  if (putNodesInWedges()) search();
  settle();
  for (const Candidate& candidate : unknown_) lookAt(candidate);
  std::vector<std::uint32_t> indexes;
  indexes.reserve(visible_.size());
  for (const Candidate& candidate : visible_) indexes.push_back(candidate.rank - 1);
  return indexes;
}

void VisibleNodeSearch::search() {
  while (!heap_.empty()) {
    const Candidate candidate = heap_.front();
    if (isBeyondReach(candidate.distance)) break;
    std::pop_heap(heap_.begin(), heap_.end());
    heap_.pop_back();
    if (candidate.rank == 0) {
      open(candidate);
    } else {
      lookAt(candidate);
    }
  }
}

void VisibleNodeSearch::open(const Candidate& candidate) {
  const NodeTree::Box& box = tree_.boxes()[candidate.place];
  const bool isLeaf = tree_.isLeaf(candidate.place);
  const bool usesShadows = ++openedCount_ > kFewBoxes;
  if (usesShadows && !isLeaf && passesOver(box)) return;
  for (std::uint32_t i = box.first; i < box.first + box.count; ++i) {
    if (!isLeaf) {
      put({tree_.boxes()[i].distanceFrom(position_), 0, i});
    } else if (!usesShadows || !shadows_.hides(tree_.points()[i])) {
      putNode(i);
    }
  }
}

bool VisibleNodeSearch::passesOver(const NodeTree::Box& box) {
  if (!shadows_.hidesButForGaps(box.low, box.high, widestGap_, gaps_)) return false;
  for (const WallShadows::Gap& gap : gaps_) wedges_.add(openPartOf(gap));
  return true;
}

// Behind a corner another wall is mostly near, so that few nodes lie in its sliver before that.
Wedge VisibleNodeSearch::openPartOf(const WallShadows::Gap& gap) const {
  const Wedge whole = shadows_.wedgeOf(gap);
  if (gap.near == 0 || wedges_.areMany()) return whole;
  const MKMapPoint ray = whole.middle();
  const auto at = [&](double way) {
    return MKMapPoint{viewpoint_.x + ray.x * way, viewpoint_.y + ray.y * way};
  };
  const double far =
      std::min(kLongestWayToLid * gap.near, gap.near + kCellsToLid * tree_.cells().sideAcross());
  for (const double step : {1.001, 1.1, 1.5}) {
    if (step * gap.near >= far) break;
    const WallGrid::Piece* wall = walls_.firstMet(at(step * gap.near), at(far));
    if (wall == nullptr) break;
    if (const auto closed = shadows_.wedgeUpTo(*wall, gap)) return *closed;
  }
  return whole;
}

// Whether there were any wedges. Some of the nodes in them may have been looked at already.
bool VisibleNodeSearch::putNodesInWedges() {
  if (wedges_.isEmpty()) return false;
  for (const std::uint32_t place : wedges_.take(planeReach())) {
    if (!shadows_.hides(tree_.points()[place])) putNode(place);
  }
  return true;
}

// How far on the map plane nodes may be that are in reach, as the sum of the distances in x and y.
double VisibleNodeSearch::planeReach() const {
  constexpr double kUnitsADegree = KorvaniPlatform::kMKMapWorldSize / 360.0;
  // Far more than the plane's points are rounded by.
  constexpr double kMore = 1.001;
  constexpr double kAtLeast = 1e-3;
  if (best_ == kNone) return std::numeric_limits<double>::infinity();
  const double degrees = kVisibleNodeReach * best_;
  const double farthest =
      std::min(std::abs(position_.latitude) + degrees, KorvaniPlatform::kMKMapMaximumLatitude);
  const double stretch = 1.0 / std::cos(KorvaniPlatform::radians(farthest));
  return kMore * degrees * kUnitsADegree * (1.0 + stretch) + kAtLeast;
}

void VisibleNodeSearch::lookAt(const Candidate& candidate) {
  const MKMapPoint point = tree_.points()[candidate.place];
  const bool mayBeInShadow = usesBoxes_ && candidate.place < tree_.countInBoxes();
  if (mayBeInShadow && shadows_.hides(point)) return;
  if (const WallGrid::Piece* wall = walls_.firstMet(viewpoint_, point)) {
    if (mayBeInShadow) shadows_.add(*wall);
    return;
  }
  best_ = std::min(best_, candidate.distance);
  visible_.push_back(candidate);
}

// In their order, each once, up to the reach of the nearest: nodes in wedges are looked at late.
void VisibleNodeSearch::settle() {
  std::sort(visible_.begin(), visible_.end(),
            [](const Candidate& a, const Candidate& b) { return b < a; });
  visible_.erase(
      std::unique(visible_.begin(), visible_.end(),
                  [](const Candidate& a, const Candidate& b) { return a.rank == b.rank; }),
      visible_.end());
  while (!visible_.empty() && isBeyondReach(visible_.back().distance)) visible_.pop_back();
}

}  // namespace

std::vector<std::uint32_t> visibleNodesByBoxes(const NodeTree& nodes, const WallGrid& walls,
                                               CLLocationCoordinate2D position) {
  return VisibleNodeSearch(nodes, walls, position).run();
}

}  // namespace KorvaniNavigation
