#include "Navigation/Path Finding/Hierarchy/ZeroLinks.hpp"

#include <algorithm>
#include <limits>
#include <numeric>

namespace KorvaniNavigation {

namespace {

constexpr std::size_t kLargestPlace = 32;
constexpr std::uint32_t kNoPlace = std::numeric_limits<std::uint32_t>::max();

}  // namespace

ZeroLinks::ZeroLinks(const SearchGraph& graph, bool barrierFree, double least,
                     Interruption& interruption)
    : graph_(graph), barrierFree_(barrierFree) {
  const std::uint32_t count = graph.nodeCount();
  group_.assign(count, 0);
  next_.resize(count);
  std::iota(next_.begin(), next_.end(), 0U);
  std::vector<std::uint32_t> group;
  for (std::uint32_t node = 0; node < count; ++node) {
    if (interruption.now()) return;
    if (group_[node] != 0) continue;
    gather(node, group);
    if (group.size() > 1 && joinable(group, least)) join(group);
  }
  numberPlaces();
  group_ = {};
}

// Whether a link of length zero leads there.
bool ZeroLinks::linked(std::uint32_t from, std::uint32_t to) const {
  for (std::uint32_t edge = graph_.firstEdge[from]; edge != graph_.firstEdge[from + 1]; ++edge) {
    if (graph_.target[edge] == to && graph_.cost[edge] == 0 && usable(edge)) return true;
  }
  return false;
}

// The nodes that links both ways connect with `first`.
void ZeroLinks::gather(std::uint32_t first, std::vector<std::uint32_t>& group) {
  group.assign(1, first);
  group_[first] = ++groupCount_;
  for (std::size_t at = 0; at < group.size(); ++at) {
    const std::uint32_t node = group[at];
    for (std::uint32_t edge = graph_.firstEdge[node]; edge != graph_.firstEdge[node + 1]; ++edge) {
      const std::uint32_t to = graph_.target[edge];
      if (graph_.cost[edge] != 0 || !usable(edge) || group_[to] != 0 || !linked(to, node)) continue;
      group_[to] = groupCount_;
      group.push_back(to);
    }
  }
}

// A connected group is a tree when it has one link less than nodes. Each link is met from both
// sides; a parallel one is met again, and makes the group look like a circle, which does no harm.
bool ZeroLinks::joinable(const std::vector<std::uint32_t>& group, double least) const {
  if (group.size() > kLargestPlace) return false;
  std::size_t ends = 0;
  for (const std::uint32_t node : group) {
    for (std::uint32_t edge = graph_.firstEdge[node]; edge != graph_.firstEdge[node + 1]; ++edge) {
      const std::uint32_t to = graph_.target[edge];
      if (to == node || !usable(edge)) continue;
      const bool inside = group_[to] == group_[node];
      if (inside && graph_.cost[edge] == 0) {
        ++ends;
      } else if (!(graph_.cost[edge] > least)) {
        return false;
      }
    }
  }
  return ends == 2 * (group.size() - 1);
}

void ZeroLinks::join(const std::vector<std::uint32_t>& group) {
  for (std::size_t i = 0; i < group.size(); ++i) next_[group[i]] = group[(i + 1) % group.size()];
}

void ZeroLinks::numberPlaces() {
  placeOf_.assign(next_.size(), kNoPlace);
  for (std::uint32_t node = 0; node < placeOf_.size(); ++node) {
    if (placeOf_[node] != kNoPlace) continue;
    std::uint32_t member = node;
    do {
      placeOf_[member] = placeCount_;
      member = next_[member];
    } while (member != node);
    ++placeCount_;
  }
}

}  // namespace KorvaniNavigation
