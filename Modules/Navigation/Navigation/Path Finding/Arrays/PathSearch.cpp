#include "Navigation/Path Finding/Arrays/PathSearch.hpp"

#include <algorithm>
#include <utility>

#include "Navigation/Path Finding/Hierarchy/RoutingHierarchy.hpp"

namespace KorvaniNavigation {

namespace {

// Bounds the memory of all that is prepared at 400 bytes a node and 100 a piece of wall, with both
// hierarchies and what positions need.
constexpr std::size_t kMostHubsOfFirst = 5;

// A search in the hierarchy compares starts and targets with each other. From so many on the waves,
// which are not far from one of them anyhow, are sooner there.
constexpr std::size_t kMostEnds = 48;

}  // namespace

void SearchHistory::dropped(int searches) const {
  const int next =
      searches < kWorthwhile ? std::min(2 * patience(), kMostPatience) : kLeastPatience;
  patience_.store(next, std::memory_order_relaxed);
}

PathSearch::PathSearch(const SearchGraph& graph, const SearchHistory& history)
    : graph_(graph), history_(history), waves_(graph) {}

PathSearch::~PathSearch() {
  for (const Prepared& prepared : prepared_) {
    if (prepared.hierarchy) history_.dropped(prepared.searches.load());
  }
}

std::optional<FoundPath> PathSearch::find(const SearchQuery& query) const {
  if (const RoutingHierarchy* hierarchy = hierarchyFor(query)) {
    RoutingHierarchy::Answer answer = hierarchy->find(query);
    switch (answer.outcome) {
      case RoutingHierarchy::Outcome::found:
        return std::move(answer.path);
      case RoutingHierarchy::Outcome::unreachable:
      case RoutingHierarchy::Outcome::interrupted:
        return std::nullopt;
      case RoutingHierarchy::Outcome::undecided:
        break;
    }
  }
  return waves_.find(query);
}

const RoutingHierarchy* PathSearch::hierarchyFor(const SearchQuery& query) const {
  if (query.starts.size() + query.targets.size() > kMostEnds) return nullptr;
  Prepared& prepared = prepared_[query.barrierFree ? 1 : 0];
  const int searches = prepared.searches.fetch_add(1, std::memory_order_relaxed);
  if (const auto* ready = prepared.ready.load(std::memory_order_acquire)) return ready;
  if (searches >= history_.patience()) make(prepared, query);
  return prepared.ready.load(std::memory_order_acquire);
}

// A hierarchy that does not help is kept as well, so that it is not made again; it costs nothing.
// One that was interrupted is made from the beginning later, but not by the next search: who gives
// his searches less time than it takes would never get an answer.
void PathSearch::make(Prepared& prepared, const SearchQuery& query) const {
  const std::unique_lock lock(making_, std::try_to_lock);
  if (!lock.owns_lock() || prepared.hierarchy) return;
  auto hierarchy = std::make_unique<const RoutingHierarchy>(graph_, query.barrierFree, mostHubs(),
                                                            query.interrupted);
  if (hierarchy->wasInterrupted()) {
    history_.dropped(0);
    prepared.searches.store(0, std::memory_order_relaxed);
    return;
  }
  prepared.hierarchy = std::move(hierarchy);
  prepared.searches.store(0, std::memory_order_relaxed);
  prepared.ready.store(prepared.hierarchy.get(), std::memory_order_release);
}

// The hierarchy that is made second has to do without.
std::size_t PathSearch::mostHubs() const {
  const bool isFirst = std::none_of(prepared_.begin(), prepared_.end(), [](const auto& prepared) {
    return prepared.hierarchy != nullptr;
  });
  return isFirst ? kMostHubsOfFirst : 0;
}

std::size_t PathSearch::bytes() const {
  std::size_t sum = sizeof *this;
  for (const Prepared& prepared : prepared_) {
    if (const auto* ready = prepared.ready.load(std::memory_order_acquire)) sum += ready->memory();
  }
  return sum;
}

}  // namespace KorvaniNavigation
