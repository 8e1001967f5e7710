#include "Navigation/Path Finding/Hierarchy/HubLabels.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

namespace KorvaniNavigation {

// From the highest place to the lowest: the list of a place is made of those of the places that its
// arcs lead to.
class HubLabels::Builder {
 public:
  Builder(const HierarchyArcs& arcs, double margin, HubLabels& labels)
      : arcs_(arcs), margin_(margin), labels_(labels), found_(arcs.placeCount()) {}

  // Gives up as soon as the lists are too long for the places seen so far and a few more.
  bool run(std::size_t mostHubs) {
    const std::uint32_t count = arcs_.placeCount();
    labels_.lists_.resize(count);
    for (std::uint32_t place = count; place > 0; --place) {
      const std::size_t arcCount = arcs_.row(place - 1).size();
      if (arcCount >= Hub::kMostArcs) return false;
      if (arcCount > 1) add(place - 1);
      const std::size_t seen = count - place + std::min(kMorePlaces, place);
      if (labels_.hubs_.size() > mostHubs * seen) return false;
    }
    return true;
  }

 private:
  static constexpr std::uint32_t kMorePlaces = 8192;
  static constexpr double kUnknown = std::numeric_limits<double>::infinity();

  struct Found {
    double cost = kUnknown;
    std::uint32_t bits = 0;
  };

  struct Way {
    std::uint32_t direction;
    Range Ranges::*up;
    Range Ranges::*down;
  };

  void add(std::uint32_t place) {
    Ranges& ranges = labels_.lists_[place];
    ranges.forward = store(place, {HierarchyArc::kForward, &Ranges::forward, &Ranges::backward});
    ranges.backward = store(place, {HierarchyArc::kBackward, &Ranges::backward, &Ranges::forward});
    if (!same(ranges.forward, ranges.backward)) return;
    labels_.hubs_.resize(ranges.backward.begin);
    labels_.costs_.resize(ranges.backward.begin);
    ranges.backward = ranges.forward;
  }

  bool same(const Range& a, const Range& b) const {
    if (a.size != b.size) return false;
    for (std::uint32_t i = 0; i < a.size; ++i) {
      if (labels_.hubs_[a.begin + i].bits != labels_.hubs_[b.begin + i].bits) return false;
      if (labels_.costs_[a.begin + i] != labels_.costs_[b.begin + i]) return false;
    }
    return true;
  }

  Range store(std::uint32_t place, const Way& way) {
    gather(place, way);
    std::sort(reached_.begin(), reached_.end());
    Range stored{static_cast<std::uint32_t>(labels_.hubs_.size()), 0};
    for (const std::uint32_t hub : reached_) {
      if (beaten(hub, way)) continue;
      labels_.hubs_.push_back({found_[hub].bits});
      labels_.costs_.push_back(found_[hub].cost);
    }
    stored.size = static_cast<std::uint32_t>(labels_.hubs_.size()) - stored.begin;
    for (const std::uint32_t hub : reached_) found_[hub] = Found{};
    return stored;
  }

  void gather(std::uint32_t place, const Way& way) {
    reached_.clear();
    const std::span<const HierarchyArc> row = arcs_.row(place);
    for (std::uint32_t i = 0; i < row.size(); ++i) {
      if ((row[i].bits & way.direction) != 0) follow(row[i], i << Hub::kArcShift, way);
    }
  }

  // The hubs behind an arc. Places with one arc have no list, but their hub is the next place.
  void follow(HierarchyArc arc, std::uint32_t arcBits, const Way& way) {
    double cost = arc.cost;
    std::uint32_t tie = arc.tied() ? Hub::kTied : 0U;
    relax(arc.place(), cost, arcBits | tie);
    std::span<const HierarchyArc> above = arcs_.row(arc.place());
    while (above.size() == 1) {
      if ((above[0].bits & way.direction) == 0) return;
      arc = above[0];
      cost += arc.cost;
      if (arc.tied()) tie = Hub::kTied;
      relax(arc.place(), cost, arcBits | tie);
      above = arcs_.row(arc.place());
    }
    const List list = labels_.list(labels_.lists_[arc.place()].*way.up);
    for (std::uint32_t i = 0; i < list.size; ++i) {
      relax(list.hubs[i].place(), cost + list.costs[i], arcBits | tie | list.hubs[i].tie());
    }
  }

  void relax(std::uint32_t hub, double cost, std::uint32_t bits) {
    Found& old = found_[hub];
    if (old.cost == kUnknown) reached_.push_back(hub);
    const bool close = std::abs(cost - old.cost) <= margin_;
    if (cost < old.cost) old = {cost, bits | hub};
    if (close) old.bits |= Hub::kTied;
  }

  // Whether the way to the hub over a higher hub is cheaper.
  bool beaten(std::uint32_t hub, const Way& way) const {
    const List list = labels_.list(labels_.lists_[hub].*way.down);
    for (std::uint32_t i = 0; i < list.size; ++i) {
      const double over = found_[list.hubs[i].place()].cost + list.costs[i];
      if (over < found_[hub].cost - margin_) return true;
    }
    return false;
  }

  const HierarchyArcs& arcs_;
  const double margin_;
  HubLabels& labels_;
  std::vector<Found> found_;  // by hub
  std::vector<std::uint32_t> reached_;
};

std::optional<HubLabels> HubLabels::build(const HierarchyArcs& arcs, double margin,
                                          std::size_t mostHubs) {
  const bool hasCore = arcs.coreBegin != arcs.placeCount();
  if (hasCore || arcs.placeCount() > Hub::kMostPlaces) return std::nullopt;
  HubLabels labels;
  if (!Builder(arcs, margin, labels).run(mostHubs)) return std::nullopt;
  labels.hubs_.shrink_to_fit();
  labels.costs_.shrink_to_fit();
  return labels;
}

std::size_t HubLabels::memory() const {
  return hubs_.capacity() * sizeof(Hub) + costs_.capacity() * sizeof(double) +
         lists_.capacity() * sizeof(Ranges);
}

}  // namespace KorvaniNavigation
