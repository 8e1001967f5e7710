#include "PathFindingPlainSearch.hpp"

#include "Navigation/Graph/KRVNavEdge.hpp"

namespace KorvaniTest {

using KorvaniNavigation::KRVNavPoint;

namespace {

bool contains(const Points& points, const KRVNavPoint& wanted) {
  for (const auto& point : points) {
    if (point->isEqual(wanted)) return true;
  }
  return false;
}

}  // namespace

Points PlainSearch::find(const Points& starts, const std::vector<double>& distances,
                         const Points& destinations, bool lookForBarrierFreeRoute) {
  for (std::size_t i = 0; i < starts.size(); ++i) {
    store(std::make_shared<Path>(Path{{starts[i]}, distances[i]}));
    nodesToCheck_.push_back(starts[i]);
  }
  while (!nodesToCheck_.empty()) wave(destinations, lookForBarrierFreeRoute);
  return bestPath_ ? bestPath_->nodes : Points();
}

std::shared_ptr<const PlainSearch::Path> PlainSearch::pathTo(const KRVNavPoint& point) const {
  for (const auto& path : pathStore_) {
    if (path->nodes.back().get() == &point) return path;
  }
  return nullptr;
}

void PlainSearch::store(std::shared_ptr<const Path> path) {
  for (auto& stored : pathStore_) {
    if (stored->nodes.back() == path->nodes.back()) {
      stored = path;
      return;
    }
  }
  pathStore_.push_back(path);
}

void PlainSearch::wave(const Points& destinations, bool lookForBarrierFreeRoute) {
  ++waves_;
  Points next;
  for (const auto& point : nodesToCheck_) {
    if (contains(destinations, *point)) continue;
    for (const auto& edge : point->neighbourEdges()) {
      const auto end = edge->end();
      const auto old = pathTo(*end);
      if (lookForBarrierFreeRoute && !edge->isBarrierFree()) continue;
      const auto current = pathTo(*point);
      auto candidate = std::make_shared<Path>(*current);
      candidate->nodes.push_back(end);
      candidate->distance = edge->multiplicator() * edge->distance() + current->distance;
      if (old && !(candidate->distance < old->distance)) continue;
      if (!contains(next, *end)) next.push_back(end);
      store(candidate);
      if (!contains(destinations, *end)) continue;
      if (!bestPath_ || candidate->distance < bestPath_->distance) bestPath_ = candidate;
    }
  }
  nodesToCheck_ = next;
}

}  // namespace KorvaniTest
