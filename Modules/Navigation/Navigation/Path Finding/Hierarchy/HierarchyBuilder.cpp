#include "Navigation/Path Finding/Hierarchy/HierarchyBuilder.hpp"

#include <algorithm>
#include <utility>

namespace KorvaniNavigation {

namespace {

constexpr std::uint32_t kContracted = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t kUnnumbered = std::numeric_limits<std::uint32_t>::max();

// What goes first: places with few arcs, each of which counts as much as two levels. The level
// keeps long corridors from being contracted from one end to the other, dead ends as well: a search
// would climb them node by node.
constexpr std::uint32_t kArcWeight = 2;

// Looking longer for cheaper ways costs more than the shortcuts that it would save.
constexpr std::size_t kWitnessSteps = 12;

// Buildings are contracted wholly below this; what has more arcs is the inside of a grid.
constexpr std::uint32_t kMostArcs = 16;

// Ties of arcs, counted at both ends, for each contracted place and to begin with. Buildings made
// with the ruler have one for every ten places, regular grids five for each place: hardly a query
// would find its way proved there.
constexpr std::size_t kMostTies = 1;
constexpr std::size_t kTiesToBeginWith = 64;

// Grids leave a core through which a search goes node by node. With a seventh of all places in it
// the search in waves is as fast, and faster whenever lengths are alike: a core is then a sixth of
// a grid, and waves take half of the time. To enter a core costs as much as this many places more.
constexpr std::size_t kLeastPlacesToCore = 7;
constexpr std::size_t kPlacesToEnterCore = 150;

// That a core will be too large shows early, after a third of the work: when places of so many arcs
// have their turn while so large a part is left. It is a twelfth in a building with halls. In a
// small graph there is little to be saved, and it may be dense and without a core all the same.
constexpr std::size_t kSmall = 1024;
constexpr std::uint32_t kManyArcs = 8;
constexpr double kMostLeft = 0.36;

std::uint32_t mirrored(std::uint32_t bits, std::uint32_t place) {
  std::uint32_t result = place | (bits & HierarchyArc::kTied);
  if ((bits & HierarchyArc::kForward) != 0) result |= HierarchyArc::kBackward;
  if ((bits & HierarchyArc::kBackward) != 0) result |= HierarchyArc::kForward;
  return result;
}

}  // namespace

HierarchyBuilder::HierarchyBuilder(std::uint32_t placeCount, double margin,
                                   Interruption& interruption)
    : margin_(margin),
      interruption_(interruption),
      rows_(placeCount),
      level_(placeCount, 0),
      reached_(placeCount) {
  store_.reserve(std::size_t{placeCount} * 6);
}

void HierarchyBuilder::append(std::uint32_t place, const HierarchyArc& arc) {
  Row& row = rows_[place];
  if (row.size == row.capacity) {
    const std::uint32_t capacity = std::max(4U, row.capacity * 2);
    const auto begin = static_cast<std::uint32_t>(store_.size());
    store_.resize(store_.size() + capacity);
    std::copy_n(store_.begin() + row.begin, row.size, store_.begin() + begin);
    row.begin = begin;
    row.capacity = capacity;
  }
  store_[row.begin + row.size] = arc;
  ++row.size;
}

void HierarchyBuilder::removeAt(std::uint32_t place, std::uint32_t index) {
  HierarchyArc* arcs = arcsOf(place);
  arcs[index] = arcs[--rows_[place].size];
}

// At most one arc for each direction stays between two places.
void HierarchyBuilder::merge(std::uint32_t place, HierarchyArc arc) {
  for (std::uint32_t i = 0; i < rows_[place].size && arc.directions() != 0;) {
    HierarchyArc& old = arcsOf(place)[i];
    const bool parallel = old.place() == arc.place();
    const std::uint32_t both = parallel ? old.directions() & arc.directions() : 0U;
    if (both == 0) {
      ++i;
    } else if (arc.cost > old.cost + margin_) {
      arc.bits &= ~both;
    } else if (old.directions() != both) {
      split(place, i, both);
    } else if (arc.cost < old.cost - margin_) {
      removeAt(place, i);
    } else {
      tie(old, arc);
      arc.bits &= ~both;
    }
  }
  if (arc.directions() != 0) join(place, arc);
}

// Makes the arc of these directions one of its own, at the end of the row.
void HierarchyBuilder::split(std::uint32_t place, std::uint32_t index, std::uint32_t directions) {
  HierarchyArc arc = arcsOf(place)[index];
  arcsOf(place)[index].bits &= ~directions;
  arc.bits = (arc.bits & ~HierarchyArc::kDirections) | directions;
  append(place, arc);
}

void HierarchyBuilder::tie(HierarchyArc& old, const HierarchyArc& arc) {
  ++ties_;
  old.bits |= HierarchyArc::kTied;
  if (!(arc.cost < old.cost)) return;
  old.cost = arc.cost;
  old.middle = arc.middle;
}

// One arc can serve both directions.
void HierarchyBuilder::join(std::uint32_t place, const HierarchyArc& arc) {
  for (std::uint32_t i = 0; i < rows_[place].size; ++i) {
    HierarchyArc& old = arcsOf(place)[i];
    const bool alike = old.cost == arc.cost && old.middle == arc.middle &&
                       ((old.bits ^ arc.bits) & ~HierarchyArc::kDirections) == 0;
    if (!alike) continue;
    old.bits |= arc.directions();
    return;
  }
  append(place, arc);
}

// `arc` as seen from `from`.
void HierarchyBuilder::connect(std::uint32_t from, std::uint32_t to, HierarchyArc arc) {
  merge(from, arc);
  arc.bits = mirrored(arc.bits, from);
  merge(to, arc);
}

void HierarchyBuilder::addEdge(std::uint32_t from, std::uint32_t to, double cost) {
  connect(from, to, {cost, to | HierarchyArc::kForward, HierarchyArc::kNoMiddle});
}

std::uint32_t HierarchyBuilder::keyOf(std::uint32_t place) const {
  return rows_[place].size * kArcWeight + level_[place];
}

void HierarchyBuilder::queue(std::uint32_t place) {
  const std::uint32_t key = keyOf(place);
  if (key == key_[place]) return;
  key_[place] = key;
  if (key >= buckets_.size()) buckets_.resize(key + 1);
  buckets_[key].push_back(place);
  lowest_ = std::min<std::size_t>(lowest_, key);
}

bool HierarchyBuilder::takeNext(std::uint32_t& place) {
  for (; lowest_ < buckets_.size(); ++lowest_) {
    std::vector<std::uint32_t>& bucket = buckets_[lowest_];
    while (!bucket.empty()) {
      place = bucket.back();
      bucket.pop_back();
      if (key_[place] == lowest_) return true;
    }
  }
  return false;
}

HierarchyArcs HierarchyBuilder::build(std::vector<std::uint32_t>& rankOf) {
  const auto count = static_cast<std::uint32_t>(rows_.size());
  key_.assign(count, kContracted - 1);
  order_.reserve(count);
  result_.firstArc.reserve(count + 1);
  result_.arcs.reserve(std::size_t{count} * 2);
  for (std::uint32_t place = count; place > 0; --place) queue(place - 1);
  if (!contractAll()) return {};
  result_.coreBegin = static_cast<std::uint32_t>(order_.size());
  if (coreIsTooLarge()) return {};
  keepCore();
  translate(rankOf);
  if (interruption_.seen()) return {};
  return std::move(result_);
}

// False when it is not worth going on.
bool HierarchyBuilder::contractAll() {
  std::uint32_t place = 0;
  while (takeNext(place) && rows_[place].size <= kMostArcs) {
    if (interruption_.now() || isInAGrid(place)) return false;
    contract(place);
    if (ties_ > kTiesToBeginWith + kMostTies * order_.size()) return false;
  }
  return true;
}

bool HierarchyBuilder::isInAGrid(std::uint32_t place) const {
  if (rows_[place].size < kManyArcs || rows_.size() < kSmall) return false;
  const auto left = static_cast<double>(rows_.size() - order_.size());
  return left > kMostLeft * static_cast<double>(rows_.size());
}

bool HierarchyBuilder::coreIsTooLarge() const {
  const std::size_t core = rows_.size() - order_.size();
  return core > 0 && (core + kPlacesToEnterCore) * kLeastPlacesToCore > rows_.size();
}

void HierarchyBuilder::contract(std::uint32_t place) {
  takeOut(place);
  if (taken_.size() > 1) {
    for (std::size_t i = 0; i + 1 < taken_.size(); ++i) bridge(place, i);
  }
  for (const HierarchyArc& arc : taken_) {
    level_[arc.place()] = std::max(level_[arc.place()], level_[place] + 1);
    queue(arc.place());
  }
}

// Its arcs become its row in the hierarchy.
void HierarchyBuilder::takeOut(std::uint32_t place) {
  taken_.assign(arcsOf(place), arcsOf(place) + rows_[place].size);
  result_.firstArc.push_back(static_cast<std::uint32_t>(result_.arcs.size()));
  result_.arcs.insert(result_.arcs.end(), taken_.begin(), taken_.end());
  order_.push_back(place);
  key_[place] = kContracted;
  rows_[place].size = 0;
  for (const HierarchyArc& arc : taken_) {
    const std::uint32_t other = arc.place();
    for (std::uint32_t i = 0; i < rows_[other].size;) {
      if (arcsOf(other)[i].place() == place) {
        removeAt(other, i);
      } else {
        ++i;
      }
    }
  }
}

// Shortcuts between the place of arc `index` and those of the later ones.
void HierarchyBuilder::bridge(std::uint32_t middle, std::size_t index) {
  const HierarchyArc a = taken_[index];
  const bool search = taken_.size() > 2 && a.directions() == HierarchyArc::kDirections;
  if (search) {
    double limit = 0;
    for (std::size_t i = index + 1; i < taken_.size(); ++i) {
      limit = std::max(limit, taken_[i].cost);
    }
    findWitnesses(a.place(), a.cost + limit);
  }
  for (std::size_t i = index + 1; i < taken_.size(); ++i) {
    const HierarchyArc& b = taken_[i];
    if (b.place() == a.place()) continue;
    std::uint32_t directions = 0;
    if (a.backward() && b.forward()) directions |= HierarchyArc::kForward;
    if (a.forward() && b.backward()) directions |= HierarchyArc::kBackward;
    const double cost = a.cost + b.cost;
    if (directions == 0 || (search && witnessed(b.place(), cost))) continue;
    const std::uint32_t tied = (a.bits | b.bits) & HierarchyArc::kTied;
    connect(a.place(), b.place(), {cost, b.place() | directions | tied, middle});
  }
}

// A few steps of Dijkstra's algorithm over arcs that serve both directions.
void HierarchyBuilder::findWitnesses(std::uint32_t from, double limit) {
  const auto later = [](const Waiting& a, const Waiting& b) { return a.cost > b.cost; };
  ++witnessSearch_;
  waiting_.assign(1, {0, from});
  reached_[from] = {0, witnessSearch_};
  for (std::size_t step = 0; step < kWitnessSteps && !waiting_.empty(); ++step) {
    std::pop_heap(waiting_.begin(), waiting_.end(), later);
    const Waiting next = waiting_.back();
    waiting_.pop_back();
    if (next.cost >= limit) break;
    if (next.cost > reached_[next.place].cost) continue;
    const HierarchyArc* arcs = arcsOf(next.place);
    for (std::uint32_t i = 0; i < rows_[next.place].size; ++i) {
      if (arcs[i].directions() != HierarchyArc::kDirections) continue;
      const double cost = next.cost + arcs[i].cost;
      Reached& reached = reached_[arcs[i].place()];
      if (cost >= limit || (reached.search == witnessSearch_ && reached.cost <= cost)) continue;
      reached = {cost, witnessSearch_};
      waiting_.push_back({cost, arcs[i].place()});
      std::push_heap(waiting_.begin(), waiting_.end(), later);
    }
  }
}

bool HierarchyBuilder::witnessed(std::uint32_t to, double cost) const {
  return reached_[to].search == witnessSearch_ && reached_[to].cost < cost - margin_;
}

void HierarchyBuilder::keepCore() {
  for (std::uint32_t place = 0; place < rows_.size(); ++place) {
    if (key_[place] == kContracted) continue;
    result_.firstArc.push_back(static_cast<std::uint32_t>(result_.arcs.size()));
    result_.arcs.insert(result_.arcs.end(), arcsOf(place), arcsOf(place) + rows_[place].size);
    order_.push_back(place);
  }
  result_.firstArc.push_back(static_cast<std::uint32_t>(result_.arcs.size()));
}

// Numbers the places anew, so that each still comes before those that its arcs lead to, and that
// most of the places that a search meets on its way up lie side by side: depth first upwards.
void HierarchyBuilder::number(std::vector<std::uint32_t>& rankOf) {
  const auto count = static_cast<std::uint32_t>(order_.size());
  rankOf.assign(count, kUnnumbered);
  std::uint32_t next = count;
  for (std::uint32_t at = count; at > result_.coreBegin; --at) rankOf[order_[at - 1]] = --next;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> climb;  // order index, next arc of its row
  for (std::uint32_t at = 0; at < result_.coreBegin; ++at) {
    if (rankOf[order_[at]] != kUnnumbered) continue;
    climb.assign(1, {at, result_.firstArc[at]});
    while (!climb.empty()) {
      if (interruption_.now()) return;
      auto& step = climb.back();
      if (step.second == result_.firstArc[step.first + 1]) {
        rankOf[order_[step.first]] = --next;
        climb.pop_back();
        continue;
      }
      const std::uint32_t above = result_.arcs[step.second++].place();
      if (rankOf[above] == kUnnumbered) {
        climb.emplace_back(orderOf_[above], result_.firstArc[orderOf_[above]]);
      }
    }
  }
}

void HierarchyBuilder::translate(std::vector<std::uint32_t>& rankOf) {
  orderOf_.resize(order_.size());
  for (std::uint32_t at = 0; at < order_.size(); ++at) orderOf_[order_[at]] = at;
  number(rankOf);
  if (interruption_.seen()) return;
  std::vector<std::uint32_t> placeAt(order_.size());
  for (std::uint32_t place = 0; place < order_.size(); ++place) placeAt[rankOf[place]] = place;
  HierarchyArcs renumbered;
  renumbered.coreBegin = result_.coreBegin;
  renumbered.firstArc.reserve(order_.size() + 1);
  renumbered.arcs.reserve(result_.arcs.size());
  for (const std::uint32_t place : placeAt) {
    if (interruption_.now()) return;
    renumbered.firstArc.push_back(static_cast<std::uint32_t>(renumbered.arcs.size()));
    for (HierarchyArc arc : result_.row(orderOf_[place])) {
      arc.bits = (arc.bits & ~HierarchyArc::kPlace) | rankOf[arc.place()];
      if (arc.middle != HierarchyArc::kNoMiddle) arc.middle = rankOf[arc.middle];
      renumbered.arcs.push_back(arc);
    }
  }
  renumbered.firstArc.push_back(static_cast<std::uint32_t>(renumbered.arcs.size()));
  result_ = std::move(renumbered);
}

}  // namespace KorvaniNavigation
