#include "Navigation/Path Finding/Arrays/PathSearch.hpp"

#include <algorithm>
#include <utility>

#include "Navigation/Path Finding/Hierarchy/RoutingHierarchy.hpp"

namespace KorvaniNavigation {

void SearchHistory::dropped(int searches) const {
  const int next =
      searches < kWorthwhile ? std::min(2 * patience(), kMostPatience) : kLeastPatience;
  patience_.store(next, std::memory_order_relaxed);
}

PathSearch::PathSearch(const SearchGraph& graph, const SearchHistory& history)
    : graph_(graph), history_(history), cheapest_(graph) {}

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
  return cheapest_.find(query);
}

const RoutingHierarchy* PathSearch::hierarchyFor(const SearchQuery& query) const {
  Prepared& prepared = prepared_[query.barrierFree ? 1 : 0];
  const int searches = prepared.searches.fetch_add(1, std::memory_order_relaxed);
  if (const auto* ready = prepared.ready.load(std::memory_order_acquire)) return ready;
  if (searches >= history_.patience()) make(prepared, query.barrierFree);
  return prepared.ready.load(std::memory_order_acquire);
}

void PathSearch::make(Prepared& prepared, bool barrierFree) const {
  const std::unique_lock lock(prepared.making, std::try_to_lock);
  if (!lock.owns_lock() || prepared.hierarchy) return;
  prepared.hierarchy = std::make_unique<const RoutingHierarchy>(graph_, barrierFree);
  prepared.searches.store(0, std::memory_order_relaxed);
  prepared.ready.store(prepared.hierarchy.get(), std::memory_order_release);
}

std::size_t PathSearch::bytes() const {
  std::size_t sum = sizeof *this;
  for (const Prepared& prepared : prepared_) {
    if (const auto* ready = prepared.ready.load(std::memory_order_acquire)) sum += ready->memory();
  }
  return sum;
}

}  // namespace KorvaniNavigation
