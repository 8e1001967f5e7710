#include "Navigation/Path Finding/Hierarchy/HubSearch.hpp"

#include <algorithm>

namespace KorvaniNavigation {

HubSearch::HubSearch(const HierarchyArcs& arcs, const HubLabels& labels, double margin,
                     HierarchySearch::Scratch& scratch)
    : arcs_(arcs), labels_(labels), margin_(margin), scratch_(scratch) {
  scratch_.begin();
}

void HubSearch::addStart(std::uint32_t place, double cost) {
  reach(place, cost, place);
  labels_.visitAbove<HubLabels::Direction::forward>(
      arcs_, place, cost, 0, [&](std::uint32_t hub, double hubCost, std::uint32_t tie) {
        reach(hub, hubCost, place | tie);
      });
}

inline void HubSearch::reach(std::uint32_t hub, double cost, std::uint32_t from) {
  HierarchySearch::Side& side = scratch_.labels[hub].forward;
  if (!side.reached()) scratch_.touched.push_back(hub);
  side.relax(cost, from, margin_);
}

void HubSearch::addTarget(std::uint32_t place) {
  meet(place, 0, 0, place);
  labels_.visitAbove<HubLabels::Direction::backward>(
      arcs_, place, 0, 0,
      [&](std::uint32_t hub, double cost, std::uint32_t tie) { meet(hub, cost, tie, place); });
}

inline void HubSearch::meet(std::uint32_t hub, double cost, std::uint32_t tie,
                            std::uint32_t target) {
  const HierarchySearch::Side& side = scratch_.labels[hub].forward;
  const double sum = side.cost + cost;
  if (!(sum <= limit_)) return;
  tied_ = sum >= best_ - margin_ || side.tied() || tie != 0;
  if (!(sum < best_)) return;
  best_ = sum;
  limit_ = sum + margin_;
  hub_ = hub;
  target_ = target;
}

// From a place up to the hub, the hub itself left out.
template <HubLabels::Direction direction>
void HubSearch::climb(std::uint32_t place, std::vector<std::uint32_t>& chain) const {
  while (place != hub_) {
    chain.push_back(place);
    place = arcs_.row(place)[labels_.arcTowards<direction>(arcs_, place, hub_)].place();
  }
}

void HubSearch::gatherChain(std::vector<std::uint32_t>& chain) const {
  chain.clear();
  climb<HubLabels::Direction::forward>(scratch_.labels[hub_].forward.before(), chain);
  chain.push_back(hub_);
  const auto top = static_cast<std::ptrdiff_t>(chain.size());
  climb<HubLabels::Direction::backward>(target_, chain);
  std::reverse(chain.begin() + top, chain.end());
}

}  // namespace KorvaniNavigation
