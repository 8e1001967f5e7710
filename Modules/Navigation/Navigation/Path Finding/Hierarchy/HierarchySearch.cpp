#include "Navigation/Path Finding/Hierarchy/HierarchySearch.hpp"

#include <algorithm>
#include <span>

namespace KorvaniNavigation {

void HierarchySearch::Scratch::begin() {
  // After an interruption some are still to be expanded.
  while (!frontier.empty()) touched.push_back(frontier.takeLowest());
  for (const std::uint32_t place : touched) labels[place] = Label{};
  touched.clear();
  heap.clear();
  frontier.rewind();
}

HierarchySearch::HierarchySearch(const HierarchyArcs& arcs, double margin,
                                 const std::atomic<bool>& interrupted, Scratch& scratch)
    : arcs_(arcs), margin_(margin), interrupted_(interrupted), scratch_(scratch) {
  scratch_.begin();
}

void HierarchySearch::addStart(std::uint32_t place, double cost) {
  Label& label = scratch_.labels[place];
  add(place, label);
  label.forward.relax(cost, Side::kBegin, margin_);
}

void HierarchySearch::addTarget(std::uint32_t place) {
  Label& label = scratch_.labels[place];
  add(place, label);
  label.backward.relax(0, Side::kBegin, margin_);
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
  const bool up = label.forward.cost <= limit_;
  const bool down = label.backward.cost <= limit_;
  if (up && down) return expandBoth(place, label);
  if (up) return expandOne<HierarchyArc::kForward>(place, label.forward, &Label::forward);
  return !down || expandOne<HierarchyArc::kBackward>(place, label.backward, &Label::backward);
}

template <std::uint32_t kDirection>
bool HierarchySearch::expandOne(std::uint32_t place, const Side& side, Side Label::*which) {
  Label* const labels = scratch_.labels.data();
  const double margin = margin_;
  const std::uint32_t from = place | (side.from & Side::kTied);
  for (const HierarchyArc& arc : arcs_.row(place)) {
    if (interrupted()) return false;
    if ((arc.bits & kDirection) == 0) continue;
    Label& above = labels[arc.place()];
    add(arc.place(), above);
    const std::uint32_t tied = arc.tied() ? Side::kTied : 0U;
    (above.*which).relax(side.cost + arc.cost, from | tied, margin);
  }
  return true;
}

// Most arcs lead both ways: what is the same for both is done once.
bool HierarchySearch::expandBoth(std::uint32_t place, const Label& label) {
  Label* const labels = scratch_.labels.data();
  const double margin = margin_;
  const std::uint32_t up = place | (label.forward.from & Side::kTied);
  const std::uint32_t down = place | (label.backward.from & Side::kTied);
  for (const HierarchyArc& arc : arcs_.row(place)) {
    if (interrupted()) return false;
    Label& above = labels[arc.place()];
    add(arc.place(), above);
    const std::uint32_t tied = arc.tied() ? Side::kTied : 0U;
    if (arc.forward()) above.forward.relax(label.forward.cost + arc.cost, up | tied, margin);
    if (arc.backward()) above.backward.relax(label.backward.cost + arc.cost, down | tied, margin);
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
    label.forward.relax(cost, place | (from.from & Side::kTied) | tied, margin_);
    if (better) scratch_.heap.push(cost, arc.place());
  }
  return true;
}

void HierarchySearch::gatherChain(std::vector<std::uint32_t>& chain) const {
  const std::vector<Label>& labels = scratch_.labels;
  chain.clear();
  for (std::uint32_t at = meeting_; at != kNone; at = labels[at].forward.before()) {
    chain.push_back(at);
  }
  std::reverse(chain.begin(), chain.end());
  for (std::uint32_t at = labels[meeting_].backward.before(); at != kNone;
       at = labels[at].backward.before()) {
    chain.push_back(at);
  }
}

}  // namespace KorvaniNavigation
