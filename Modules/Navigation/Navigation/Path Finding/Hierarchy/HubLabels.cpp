#include "Navigation/Path Finding/Hierarchy/HubLabels.hpp"

#include <algorithm>
#include <cmath>

namespace KorvaniNavigation {

// From the highest place to the lowest: the list of a place is made of those of the places that its
// arcs lead to.
class HubLabels::Builder {
 public:
  Builder(const HierarchyArcs& arcs, double margin, HubLabels& labels)
      : arcs_(arcs), margin_(margin), labels_(labels), found_(arcs.placeCount()) {}

  // Gives up as soon as the lists are too long for the places seen so far and a few more.
  bool run(std::size_t mostHubs, Interruption& interruption) {
    const std::uint32_t count = arcs_.placeCount();
    labels_.ranges_.resize(count);
    for (std::uint32_t place = count; place > 0; --place) {
      if (interruption.now()) return false;
      if (arcs_.row(place - 1).size() >= Hub::kMostArcs) return false;
      if (needsList(place - 1)) add(place - 1);
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

  bool needsList(std::uint32_t place) const {
    const std::span<const HierarchyArc> row = arcs_.row(place);
    if (row.size() == 1) return false;
    const auto listed = [&](const HierarchyArc& arc) { return labels_.listed(arc.place()); };
    return row.size() != 2 || !std::all_of(row.begin(), row.end(), listed);
  }

  void add(std::uint32_t place) {
    const Range forward = store<Direction::forward, Direction::backward>(place);
    const Range backward = store<Direction::backward, Direction::forward>(place);
    labels_.ranges_[place] = {forward, backward};
    if (!same(forward, backward)) return;
    labels_.hubs_.resize(backward.begin);
    labels_.costs_.resize(backward.begin);
    labels_.ranges_[place].backward = forward;
  }

  bool same(const Range& a, const Range& b) const {
    if (a.size != b.size) return false;
    for (std::uint32_t i = 0; i < a.size; ++i) {
      if (labels_.hubs_[a.begin + i].bits != labels_.hubs_[b.begin + i].bits) return false;
      if (labels_.costs_[a.begin + i] != labels_.costs_[b.begin + i]) return false;
    }
    return true;
  }

  template <Direction up, Direction down>
  Range store(std::uint32_t place) {
    gather<up>(place);
    std::sort(reached_.begin(), reached_.end());
    Range stored{static_cast<std::uint32_t>(labels_.hubs_.size()), 0};
    for (const std::uint32_t hub : reached_) {
      if (beaten<down>(hub)) continue;
      labels_.hubs_.push_back({found_[hub].bits});
      labels_.costs_.push_back(found_[hub].cost);
    }
    stored.size = static_cast<std::uint32_t>(labels_.hubs_.size()) - stored.begin;
    for (const std::uint32_t hub : reached_) found_[hub] = Found{};
    return stored;
  }

  template <Direction up>
  void gather(std::uint32_t place) {
    reached_.clear();
    const std::span<const HierarchyArc> row = arcs_.row(place);
    for (std::uint32_t i = 0; i < row.size(); ++i) {
      if (!leads<up>(row[i])) continue;
      const auto visit = [&](std::uint32_t hub, double cost, std::uint32_t tie) {
        relax(hub, cost, tie | (i << Hub::kArcShift));
      };
      const std::uint32_t tie = row[i].tied() ? Hub::kTied : 0U;
      visit(row[i].place(), row[i].cost, tie);
      labels_.visitAbove<up>(arcs_, row[i].place(), row[i].cost, tie, visit);
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
  template <Direction down>
  bool beaten(std::uint32_t hub) const {
    bool found = false;
    const double limit = found_[hub].cost - margin_;
    labels_.visitAbove<down>(arcs_, hub, 0, 0, [&](std::uint32_t over, double cost, std::uint32_t) {
      found = found || found_[over].cost + cost < limit;
    });
    return found;
  }

  const HierarchyArcs& arcs_;
  const double margin_;
  HubLabels& labels_;
  std::vector<Found> found_;  // by hub
  std::vector<std::uint32_t> reached_;
};

std::optional<HubLabels> HubLabels::build(const HierarchyArcs& arcs, double margin,
                                          std::size_t mostHubs, Interruption& interruption) {
  const bool hasCore = arcs.coreBegin != arcs.placeCount();
  if (hasCore || arcs.placeCount() > Hub::kMostPlaces) return std::nullopt;
  HubLabels labels;
  if (!Builder(arcs, margin, labels).run(mostHubs, interruption)) return std::nullopt;
  labels.hubs_.shrink_to_fit();
  labels.costs_.shrink_to_fit();
  return labels;
}

std::size_t HubLabels::memory() const {
  return hubs_.capacity() * sizeof(Hub) + costs_.capacity() * sizeof(double) +
         ranges_.capacity() * sizeof(Ranges);
}

}  // namespace KorvaniNavigation
