#include "Navigation/Path Finding/Hierarchy/HierarchySearch.hpp"

#include <cmath>
#include <span>

namespace KorvaniNavigation {

HierarchySearch::HierarchySearch(const HierarchyArcs& arcs, double margin,
                                 const std::atomic<bool>& interrupted, Scratch& scratch)
    : arcs_(arcs), margin_(margin), interrupted_(interrupted), scratch_(scratch) {
  // After an interruption some are still to be expanded.
  while (!scratch_.frontier.empty()) scratch_.touched.push_back(scratch_.frontier.takeLowest());
  for (const std::uint32_t place : scratch_.touched) scratch_.labels[place] = Label{};
  scratch_.touched.clear();
  scratch_.heap.clear();
  scratch_.frontier.rewind();
}

void HierarchySearch::addStart(std::uint32_t place, double cost) {
  Label& label = scratch_.labels[place];
  add(place, label);
  relax(label.forward, cost, Side::kBegin);
}

void HierarchySearch::addTarget(std::uint32_t place) {
  Label& label = scratch_.labels[place];
  add(place, label);
  relax(label.backward, 0, Side::kBegin);
}

// Before the place gets a label. Those outside the core are noted as touched when they are
// expanded.
inline void HierarchySearch::add(std::uint32_t place, const Label& label) {
  if (place < arcs_.coreBegin) {
    scratch_.frontier.add(place);
  } else if (!label.forward.reached() && !label.backward.reached()) {
    scratch_.touched.push_back(place);
  }
}

// `from` carries the mark of a tie where the way has one.
inline void HierarchySearch::relax(Side& side, double cost, std::uint32_t from) const {
  const bool better = cost < side.cost;
  const bool close = std::abs(cost - side.cost) <= margin_;  // false where both are infinite
  side.cost = better ? cost : side.cost;
  side.from = (better ? from : side.from) | (close ? Side::kTied : 0U);
}

bool HierarchySearch::run() {
  while (!scratch_.frontier.empty()) {
    if (interrupted() || !expand(scratch_.frontier.takeLowest())) return false;
  }
  return arcs_.coreBegin == arcs_.placeCount() || crossCore();
}

inline void HierarchySearch::meet(std::uint32_t place, const Label& label) {
  const double cost = label.forward.cost + label.backward.cost;
  if (!(cost <= limit_)) return;
  tied_ = cost >= best_ - margin_ || label.forward.tied() || label.backward.tied();
  if (cost < best_) {
    best_ = cost;
    limit_ = cost + margin_;
    meeting_ = place;
  }
}

bool HierarchySearch::expand(std::uint32_t place) {
  scratch_.touched.push_back(place);
  const Label label = scratch_.labels[place];
  meet(place, label);
  if (!(label.forward.cost <= limit_) && !(label.backward.cost <= limit_)) return true;
  const std::uint32_t up = place | (label.forward.from & Side::kTied);
  const std::uint32_t down = place | (label.backward.from & Side::kTied);
  for (const HierarchyArc& arc : arcs_.row(place)) {
    if (interrupted()) return false;
    const std::uint32_t tied = arc.tied() ? Side::kTied : 0U;
    Label& above = scratch_.labels[arc.place()];
    add(arc.place(), above);
    if (arc.forward()) relax(above.forward, label.forward.cost + arc.cost, up | tied);
    if (arc.backward()) relax(above.backward, label.backward.cost + arc.cost, down | tied);
  }
  return true;
}

// Dijkstra's algorithm from the places of the core that the starts reach. The labels of the other
// side are complete, each for a way down from there.
bool HierarchySearch::crossCore() {
  for (const std::uint32_t place : scratch_.touched) {
    const Side& side = scratch_.labels[place].forward;
    if (place >= arcs_.coreBegin && side.reached()) scratch_.heap.push(side.cost, place);
  }
  while (!scratch_.heap.empty()) {
    if (interrupted()) return false;
    const FourHeap::Entry top = scratch_.heap.top();
    if (top.cost > limit_) break;
    scratch_.heap.pop();
    const Label& label = scratch_.labels[top.node];
    if (top.cost > label.forward.cost) continue;
    meet(top.node, label);
    if (!expandInCore(top.node)) return false;
  }
  return true;
}

bool HierarchySearch::expandInCore(std::uint32_t place) {
  const Side from = scratch_.labels[place].forward;
  for (const HierarchyArc& arc : arcs_.row(place)) {
    if (interrupted()) return false;
    if (!arc.forward()) continue;
    const double cost = from.cost + arc.cost;
    Label& label = scratch_.labels[arc.place()];
    const Side& side = label.forward;
    const bool better = cost < side.cost;
    // A tie that is found after the place was expanded has not been passed on.
    if (!better && cost <= side.cost + margin_ && side.cost <= from.cost) lateTie_ = true;
    add(arc.place(), label);
    const std::uint32_t tied = arc.tied() ? Side::kTied : 0U;
    relax(label.forward, cost, place | (from.from & Side::kTied) | tied);
    if (better) scratch_.heap.push(cost, arc.place());
  }
  return true;
}

}  // namespace KorvaniNavigation
