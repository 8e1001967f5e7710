#include "Navigation/Path Finding/Hierarchy/HubSearch.hpp"

#include <algorithm>

namespace KorvaniNavigation {

HubSearch::HubSearch(const HierarchyArcs& arcs, const HubLabels& labels, double margin,
                     HierarchySearch::Scratch& scratch)
    : arcs_(arcs), labels_(labels), margin_(margin), scratch_(scratch) {
  scratch_.begin();
}

void HubSearch::addStart(std::uint32_t start, double cost) {
  std::uint32_t place = start;
  std::uint32_t from = start;
  reach(place, cost, from);
  while (arcs_.row(place).size() == 1) {
    const HierarchyArc& arc = arcs_.row(place).front();
    if (!arc.forward()) return;
    if (arc.tied()) from |= HierarchySearch::Side::kTied;
    place = arc.place();
    cost += arc.cost;
    reach(place, cost, from);
  }
  const HubLabels::List list = labels_.forward(place);
  for (std::uint32_t i = 0; i < list.size; ++i) {
    reach(list.hubs[i].place(), cost + list.costs[i], from | list.hubs[i].tie());
  }
}

inline void HubSearch::reach(std::uint32_t hub, double cost, std::uint32_t from) {
  HierarchySearch::Side& side = scratch_.labels[hub].forward;
  if (!side.reached()) scratch_.touched.push_back(hub);
  side.relax(cost, from, margin_);
}

void HubSearch::addTarget(std::uint32_t target) {
  std::uint32_t place = target;
  std::uint32_t tie = 0;
  double cost = 0;
  meet(place, cost, tie, target);
  while (arcs_.row(place).size() == 1) {
    const HierarchyArc& arc = arcs_.row(place).front();
    if (!arc.backward()) return;
    if (arc.tied()) tie = HubLabels::Hub::kTied;
    place = arc.place();
    cost += arc.cost;
    meet(place, cost, tie, target);
  }
  const HubLabels::List list = labels_.backward(place);
  for (std::uint32_t i = 0; i < list.size; ++i) {
    meet(list.hubs[i].place(), cost + list.costs[i], tie | list.hubs[i].tie(), target);
  }
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

void HubSearch::gatherChain(std::vector<std::uint32_t>& chain) const {
  chain.clear();
  climb(scratch_.labels[hub_].forward.before(), &HubLabels::forward, chain);
  chain.push_back(hub_);
  const auto top = static_cast<std::ptrdiff_t>(chain.size());
  climb(target_, &HubLabels::backward, chain);
  std::reverse(chain.begin() + top, chain.end());
}

// From a place up to the hub, the hub itself left out.
void HubSearch::climb(std::uint32_t place, ListOf listOf, std::vector<std::uint32_t>& chain) const {
  while (place != hub_) {
    chain.push_back(place);
    const auto row = arcs_.row(place);
    std::size_t arc = 0;
    if (row.size() > 1) {
      const HubLabels::Hub* hub = (labels_.*listOf)(place).hubs;
      while (hub->place() != hub_) ++hub;
      arc = hub->arc();
    }
    place = row[arc].place();
  }
}

}  // namespace KorvaniNavigation
