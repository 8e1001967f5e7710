#include "Navigation/Localisation/VisibleNodesByBoxes.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "Navigation/Localisation/WallShadows.hpp"

namespace KorvaniNavigation {

namespace {

// Most positions see a node before so many boxes are open. Up to then, to ask for shadows costs
// more than they save: up to a tenth of the time of such a search.
constexpr std::uint32_t kFewBoxes = 16;
// After so many boxes a search is taken for one that sees little, and sees to slivers one by one
// so that it can pass over areas that they run through.
constexpr std::uint32_t kPatience = 32;

// Where a wall behind a corner is looked for, as a multiple of the corner's distance.
constexpr double kLongestWayToLid = 20.0;

// One walk outwards from a position.
class VisibleNodeSearch {
 public:
  VisibleNodeSearch(const NodeTree& tree, const WallGrid& walls, CLLocationCoordinate2D position)
      : tree_(tree),
        walls_(walls),
        position_(position),
        viewpoint_(KorvaniPlatform::MKMapPointForCoordinate(position)),
        shadows_(viewpoint_) {}

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
  bool passesOver(const NodeTree::Box& box, double distance);
  WallShadows::Ray openPartOf(const WallShadows::Sliver& sliver) const;
  void putNodesOn(const WallShadows::Ray& ray, double distance);
  void putNodesOn(const WallShadows::Ray& ray, double distance, std::uint32_t box);
  void lookAt(const Candidate& candidate);

  const NodeTree& tree_;
  const WallGrid& walls_;
  CLLocationCoordinate2D position_;
  MKMapPoint viewpoint_;
  WallShadows shadows_;
  std::vector<Candidate> heap_;
  std::vector<Candidate> unknown_;  // nodes of a distance that is no number
  std::vector<WallShadows::Sliver> slivers_;
  std::vector<std::uint32_t> visible_;
  double best_ = kNone;
  std::uint32_t openedCount_ = 0;
  std::uint32_t lastRank_ = 0;
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
  if (usesBoxes_) put({0, 0, static_cast<std::uint32_t>(tree_.boxes().size() - 1)});
  const auto count = static_cast<std::uint32_t>(tree_.nodes().size());
  for (std::uint32_t i = usesBoxes_ ? tree_.countInBoxes() : 0; i < count; ++i) putNode(i);
  std::sort(unknown_.begin(), unknown_.end(),
            [](const Candidate& a, const Candidate& b) { return a.rank < b.rank; });
}

std::vector<std::uint32_t> VisibleNodeSearch::run() {
  begin();
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
  for (const Candidate& candidate : unknown_) lookAt(candidate);
  return std::move(visible_);
}

void VisibleNodeSearch::open(const Candidate& candidate) {
  const NodeTree::Box& box = tree_.boxes()[candidate.place];
  if (passesOver(box, candidate.distance)) return;
  const bool isLeaf = tree_.isLeaf(candidate.place);
  for (std::uint32_t i = box.first; i < box.first + box.count; ++i) {
    if (!isLeaf) {
      put({tree_.boxes()[i].distanceFrom(position_), 0, i});
    } else if (openedCount_ <= kFewBoxes || !shadows_.hides(tree_.nodes()[i].point)) {
      putNode(i);
    }
  }
}

bool VisibleNodeSearch::passesOver(const NodeTree::Box& box, double distance) {
  if (++openedCount_ <= kFewBoxes) return false;
  if (openedCount_ <= kPatience) return shadows_.hides(box.low, box.high);
  slivers_.clear();
  if (!shadows_.hidesButForSlivers(box.low, box.high, slivers_)) return false;
  for (const auto& sliver : slivers_) putNodesOn(openPartOf(sliver), distance);
  return true;
}

// Behind a corner another wall is mostly near, so that few nodes lie in its sliver before that.
WallShadows::Ray VisibleNodeSearch::openPartOf(const WallShadows::Sliver& sliver) const {
  const MKMapPoint ray = sliver.direction;
  const auto at = [&](double reach) {
    return MKMapPoint{viewpoint_.x + ray.x * reach, viewpoint_.y + ray.y * reach};
  };
  for (const double step : {1.001, 1.1, 1.5}) {
    const WallGrid::Piece* wall =
        walls_.firstMet(at(step * sliver.reach), at(kLongestWayToLid * sliver.reach));
    if (wall == nullptr) break;
    if (const auto closed = shadows_.rayUpTo(*wall, sliver)) return *closed;
  }
  return shadows_.rayOf(sliver);
}

// Nodes nearer than `distance` were looked at, or passed over when their own slivers were seen to.
// Some of these are put a second time when their box is opened. Such twins follow each other.
void VisibleNodeSearch::putNodesOn(const WallShadows::Ray& ray, double distance) {
  if (!tree_.cells().isEven()) {
    putNodesOn(ray, distance, static_cast<std::uint32_t>(tree_.boxes().size() - 1));
    return;
  }
  const auto putRun = [&](const NodeCells::Entry* node, const NodeCells::Entry* last) {
    for (; node != last; ++node) {
      if (!ray.reaches(node->point)) continue;
      if (degreeDistance(position_, node->coordinate) >= distance) putNode(node->place);
    }
  };
  tree_.cells().along(viewpoint_, ray.direction(), ray.length(), putRun);
}

// The same from box to box.
void VisibleNodeSearch::putNodesOn(const WallShadows::Ray& ray, double distance,
                                   std::uint32_t box) {
  const NodeTree::Box& parts = tree_.boxes()[box];
  for (std::uint32_t i = parts.first; i < parts.first + parts.count; ++i) {
    if (!tree_.isLeaf(box)) {
      const NodeTree::Box& part = tree_.boxes()[i];
      if (ray.reachesInto(part.low, part.high)) putNodesOn(ray, distance, i);
    } else if (ray.reaches(tree_.nodes()[i].point)) {
      if (degreeDistance(position_, tree_.nodes()[i].coordinate) >= distance) putNode(i);
    }
  }
}

void VisibleNodeSearch::lookAt(const Candidate& candidate) {
  if (candidate.rank == lastRank_) return;
  lastRank_ = candidate.rank;
  const MKMapPoint point = tree_.nodes()[candidate.place].point;
  const bool mayBeInShadow = usesBoxes_ && candidate.place < tree_.countInBoxes();
  if (mayBeInShadow && shadows_.hides(point)) return;
  if (const WallGrid::Piece* wall = walls_.firstMet(viewpoint_, point)) {
    if (mayBeInShadow) shadows_.add(*wall);
    return;
  }
  best_ = std::min(best_, candidate.distance);
  visible_.push_back(candidate.rank - 1);
}

}  // namespace

std::vector<std::uint32_t> visibleNodesByBoxes(const NodeTree& nodes, const WallGrid& walls,
                                               CLLocationCoordinate2D position) {
  return VisibleNodeSearch(nodes, walls, position).run();
}

}  // namespace KorvaniNavigation
