#include "FloorPlan/Spanner.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <queue>
#include <tuple>

namespace KorvaniTools {
namespace {

constexpr double kDetour = 1.05;
constexpr std::size_t kAllPairs = 150;
constexpr std::size_t kNearest = 40;
constexpr std::size_t kAllEnds = 300;
constexpr double kFar = std::numeric_limits<double>::infinity();

using Entry = std::pair<double, std::size_t>;  // distance, point
using Queue = std::priority_queue<Entry, std::vector<Entry>, std::greater<>>;

}  // namespace

std::size_t Spanner::add(GroundPoint at) {
  points_.push_back(at);
  edges_.emplace_back();
  reached_.push_back(kFar);
  return points_.size() - 1;
}

void Spanner::join(std::size_t a, std::size_t b) {
  const double length = groundDistance(points_[a], points_[b]);
  edges_[a].emplace_back(b, length);
  edges_[b].emplace_back(a, length);
}

void Spanner::removeEdges() {
  for (auto& edges : edges_) edges.clear();
}

std::vector<Spanner::Pair> Spanner::candidates(const std::vector<std::size_t>& among) const {
  std::vector<Pair> pairs;
  if (among.size() <= kAllPairs) {
    for (std::size_t i = 0; i < among.size(); ++i) {
      for (std::size_t k = i + 1; k < among.size(); ++k) {
        pairs.emplace_back(std::minmax(among[i], among[k]));
      }
    }
    return pairs;
  }
  std::vector<std::size_t> order = among;
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return std::tie(points_[a].x, a) < std::tie(points_[b].x, b);
  });
  std::set<Pair> chosen;
  for (std::size_t i = 0; i < order.size(); ++i) {
    Queue::container_type nearest;  // a heap, the farthest on top
    const auto look = [&](std::size_t other) {
      const double dx = std::abs(points_[other].x - points_[order[i]].x);
      if (nearest.size() == kNearest && dx > nearest.front().first) return false;
      nearest.emplace_back(groundDistance(points_[order[i]], points_[other]), other);
      std::push_heap(nearest.begin(), nearest.end());
      if (nearest.size() > kNearest) {
        std::pop_heap(nearest.begin(), nearest.end());
        nearest.pop_back();
      }
      return true;
    };
    for (std::size_t k = i + 1; k < order.size() && look(order[k]); ++k) continue;
    for (std::size_t k = i; k > 0 && look(order[k - 1]); --k) continue;
    for (const Entry& entry : nearest) chosen.insert(std::minmax(order[i], entry.second));
  }
  pairs.assign(chosen.begin(), chosen.end());
  return pairs;
}

Spanner::Candidates Spanner::inOrder(const std::vector<Pair>& pairs) const {
  Candidates order;
  order.reserve(pairs.size());
  for (const Pair& pair : pairs) {
    order.emplace_back(groundDistance(points_[pair.first], points_[pair.second]), pair);
  }
  std::sort(order.begin(), order.end());
  return order;
}

void Spanner::fill(const std::vector<Pair>& candidates, const Sees& sees) {
  for (const auto& [length, pair] : inOrder(candidates)) {
    if (shorterWay(pair.first, pair.second, kDetour * length)) continue;
    if (sees(pair.first, pair.second)) join(pair.first, pair.second);
  }
}

void Spanner::bridge(const std::vector<Pair>& candidates, const Sees& sees) {
  std::vector<std::size_t> parent(points_.size());
  for (std::size_t i = 0; i < parent.size(); ++i) parent[i] = i;
  const auto root = [&](std::size_t i) {
    while (parent[i] != i) i = parent[i] = parent[parent[i]];
    return i;
  };
  for (std::size_t i = 0; i < points_.size(); ++i) {
    for (const auto& [next, length] : edges_[i]) parent[root(i)] = root(next);
  }
  for (const auto& [length, pair] : inOrder(candidates)) {
    if (root(pair.first) == root(pair.second) || !sees(pair.first, pair.second)) continue;
    join(pair.first, pair.second);
    parent[root(pair.first)] = root(pair.second);
  }
}

bool Spanner::shorterWay(std::size_t from, std::size_t to, double limit) {
  std::vector<std::size_t> touched{from};
  reached_[from] = 0;
  Queue queue;
  queue.emplace(0, from);
  bool found = false;
  while (!queue.empty() && !found) {
    const auto [distance, point] = queue.top();
    queue.pop();
    if (distance > reached_[point]) continue;
    found = point == to;
    for (const auto& [next, length] : edges_[point]) {
      const double sum = distance + length;
      // No way is shorter than the straight one that is left.
      if (sum >= reached_[next] || sum + groundDistance(points_[next], points_[to]) > limit)
        continue;
      if (reached_[next] == kFar) touched.push_back(next);
      reached_[next] = sum;
      queue.emplace(sum, next);
    }
  }
  for (const std::size_t point : touched) reached_[point] = kFar;
  return found;
}

Spanner::Way Spanner::waysFrom(std::size_t from) const {
  Way way{std::vector<double>(points_.size(), kFar),
          std::vector<std::size_t>(points_.size(), from)};
  way.distance[from] = 0;
  Queue queue;
  queue.emplace(0, from);
  while (!queue.empty()) {
    const auto [distance, point] = queue.top();
    queue.pop();
    if (distance > way.distance[point]) continue;
    for (const auto& [next, length] : edges_[point]) {
      if (distance + length >= way.distance[next]) continue;
      way.distance[next] = distance + length;
      way.before[next] = point;
      queue.emplace(distance + length, next);
    }
  }
  return way;
}

bool Spanner::connects(const std::vector<std::size_t>& points) const {
  if (points.size() < 2) return true;
  const Way way = waysFrom(points.front());
  return std::all_of(points.begin(), points.end(),
                     [&](std::size_t point) { return way.distance[point] < kFar; });
}

std::set<Spanner::Pair> Spanner::edgesBetween(const std::vector<std::size_t>& ends) const {
  if (ends.size() > kAllEnds) return withoutDeadEnds(ends);
  std::set<Pair> kept;
  for (const std::size_t from : ends) {
    const Way way = waysFrom(from);
    std::vector<bool> walked(points_.size(), false);
    for (const std::size_t to : ends) {
      if (way.distance[to] == kFar) continue;
      for (std::size_t at = to; at != from && !walked[at]; at = way.before[at]) {
        walked[at] = true;
        kept.insert(std::minmax(at, way.before[at]));
      }
    }
  }
  return kept;
}

std::set<Spanner::Pair> Spanner::withoutDeadEnds(const std::vector<std::size_t>& ends) const {
  const std::set<std::size_t> needed(ends.begin(), ends.end());
  std::vector<std::set<std::size_t>> neighbours(points_.size());
  for (std::size_t i = 0; i < points_.size(); ++i) {
    for (const auto& [next, length] : edges_[i]) neighbours[i].insert(next);
  }
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < points_.size(); ++i) open.push_back(i);
  while (!open.empty()) {
    const std::size_t at = open.back();
    open.pop_back();
    if (needed.contains(at) || neighbours[at].size() != 1) continue;
    const std::size_t next = *neighbours[at].begin();
    neighbours[at].clear();
    neighbours[next].erase(at);
    open.push_back(next);
  }
  std::set<Pair> kept;
  for (std::size_t i = 0; i < points_.size(); ++i) {
    for (const std::size_t next : neighbours[i]) kept.insert(std::minmax(i, next));
  }
  return kept;
}

}  // namespace KorvaniTools
