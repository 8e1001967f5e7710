#include "Navigation/Path Finding/Hierarchy/StartWays.hpp"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace KorvaniNavigation {

namespace {

bool endsWith(const FoundPath& longer, const FoundPath& shorter) {
  return longer.nodes.size() > shorter.nodes.size() &&
         std::equal(shorter.nodes.rbegin(), shorter.nodes.rend(), longer.nodes.rbegin());
}

// Two ways of which the longer one ends with the shorter one.
class WayOverStart {
 public:
  WayOverStart(const StartWay& longer, const StartWay& shorter, const HierarchyPlaces& places)
      : longer_(longer),
        shorter_(shorter),
        places_(places),
        nodes_(longer.path.nodes),
        before_(nodes_.size() - shorter.path.nodes.size()),
        cost_(longer.distance) {
    for (std::size_t i = 0; i < before_; ++i) cost_ = step(i) + cost_;
  }

  // Whether the longer way comes to the other start more cheaply than by its own distance.
  bool improvesStart() const { return cost_ < shorter_.distance; }

  // It does, and there are no other ways.
  bool isFound() const {
    if (before_ == 1 && longer_.listed < shorter_.listed) return true;
    double cost = cost_;
    double ahead = shorter_.distance;
    for (std::size_t i = before_; i + 1 < nodes_.size(); ++i) {
      cost = step(i) + cost;
      ahead = step(i) + ahead;
      if (!(cost < ahead)) return false;
    }
    return true;
  }

 private:
  double step(std::size_t i) const { return places_.stepCost(nodes_[i], nodes_[i + 1]); }

  const StartWay& longer_;
  const StartWay& shorter_;
  const HierarchyPlaces& places_;
  const std::vector<std::uint32_t>& nodes_;
  std::size_t before_;  // edges up to the other start
  double cost_;         // there
};

}  // namespace

std::optional<std::size_t> wayOfWaves(std::span<const StartWay> ways,
                                      const HierarchyPlaces& places) {
  const auto hasFewerNodes = [](const StartWay& a, const StartWay& b) {
    return a.path.nodes.size() < b.path.nodes.size();
  };
  const auto shortest = std::min_element(ways.begin(), ways.end(), hasFewerNodes);
  auto found = shortest;
  for (auto way = ways.begin(); way != ways.end(); ++way) {
    if (way == shortest) continue;
    if (!endsWith(way->path, shortest->path)) return std::nullopt;
    const WayOverStart over(*way, *shortest, places);
    if (!over.improvesStart()) continue;
    if (ways.size() > 2) return std::nullopt;
    if (over.isFound()) found = way;
  }
  return static_cast<std::size_t>(found - ways.begin());
}

}  // namespace KorvaniNavigation
