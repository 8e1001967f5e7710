#include "Navigation/Path Finding/Hierarchy/RoutingHierarchy.hpp"

#include <algorithm>
#include <limits>
#include <optional>
#include <span>
#include <utility>

#include "Navigation/Path Finding/Arrays/ScratchPool.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchyArcs.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchyBuilder.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchyPlaces.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchySearch.hpp"
#include "Navigation/Path Finding/Hierarchy/HubLabels.hpp"
#include "Navigation/Path Finding/Hierarchy/HubSearch.hpp"
#include "Navigation/Path Finding/Hierarchy/RoundingBound.hpp"
#include "Navigation/Path Finding/Hierarchy/StartWays.hpp"
#include "Navigation/Path Finding/Hierarchy/ZeroLinks.hpp"

namespace KorvaniNavigation {

namespace {

// Edges that leave a place of several nodes cost so much more than the margin.
constexpr double kLeastOfMargin = 4;

// So many starts are compared with each other; a position has two at most.
constexpr std::size_t kMostStartsCompared = 4;

// Nodes of a way; saves making room again and again.
constexpr std::size_t kUsualLength = 64;

bool isAmong(std::span<const std::uint32_t> nodes, std::uint32_t node) {
  return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
}

HierarchyArcs contracted(const SearchGraph& graph, bool barrierFree, const ZeroLinks& links,
                         double margin, std::vector<std::uint32_t>& rankOf,
                         Interruption& interruption) {
  HierarchyBuilder builder(links.placeCount(), margin, interruption);
  const std::vector<std::uint32_t>& placeOf = links.placeOf();
  for (std::uint32_t node = 0; node < graph.nodeCount(); ++node) {
    if (interruption.now()) return {};
    for (std::uint32_t edge = graph.firstEdge[node]; edge != graph.firstEdge[node + 1]; ++edge) {
      const std::uint32_t to = placeOf[graph.target[edge]];
      if (to == placeOf[node] || (barrierFree && graph.barrierFree[edge] == 0)) continue;
      builder.addEdge(placeOf[node], to, graph.cost[edge]);
    }
  }
  return builder.build(rankOf);
}

}  // namespace

struct RoutingHierarchy::Scratch {
  explicit Scratch(std::uint32_t placeCount) : search(placeCount) {}

  HierarchySearch::Scratch search;
  std::vector<std::uint32_t> chain;  // places of the way before shortcuts are spelled out
  std::vector<std::uint32_t> waiting;
};

struct RoutingHierarchy::Built {
  HierarchyArcs arcs;
  HierarchyPlaces places;
  std::optional<HubLabels> labels;
};

// One query.
class RoutingHierarchy::Run {
 public:
  Run(const RoutingHierarchy& hierarchy, const SearchQuery& query, Scratch& scratch)
      : hierarchy_(hierarchy),
        arcs_(hierarchy.built_->arcs),
        places_(hierarchy.built_->places),
        query_(query),
        starts_(query.starts),
        scratch_(scratch) {}

  // Only a way to a target that is a start as well, and that it does not reach more cheaply than
  // by its own distance, is looked for again without that target.
  Answer find() {
    for (;;) {
      Answer answer = findOnce();
      if (answer.outcome != Outcome::found) return answer;
      const std::uint32_t target = answer.path.nodes.back();
      if (!isStart(target) || answer.path.cost < distanceOf(target)) {
        return passesTarget(answer.path) ? Answer{} : answer;
      }
      dropped_.push_back(target);
    }
  }

 private:
  // Of a start that is listed several times the last one counts.
  double distanceOf(std::uint32_t node) const {
    double distance = 0;
    for (const StartNode& start : query_.starts) {
      if (start.node == node) distance = start.distance;
    }
    return distance;
  }

  bool isStart(std::uint32_t node) const {
    const auto same = [&](const StartNode& start) { return start.node == node; };
    return std::any_of(query_.starts.begin(), query_.starts.end(), same);
  }

  // Of the targets only those that were left out can be on the way.
  bool passesTarget(const FoundPath& path) const {
    const auto passed = [&](std::uint32_t node) { return isAmong(dropped_, node); };
    return !dropped_.empty() && std::any_of(path.nodes.begin(), path.nodes.end(), passed);
  }

  // What a search from some starts gives. Undecided is tied, or costs too much for the margin.
  struct Attempt {
    Answer answer;
    double sum = 0;  // what the best way costs, as the hierarchy adds it up
  };

  Answer findOnce() {
    starts_ = query_.starts;
    Attempt whole = attempt();
    if (whole.answer.outcome != Outcome::undecided) return std::move(whole.answer);
    return hierarchy_.bound_.holdsFor(whole.sum) ? findFromEachStart() : Answer{};
  }

  // The tie may be one between starts.
  Answer findFromEachStart() {
    const std::size_t count = query_.starts.size();
    if (count < 2 || count > kMostStartsCompared) return {};
    std::vector<StartWay> ways;
    std::vector<double> tiedSums;
    for (std::size_t i = 0; i < count; ++i) {
      if (isListedBefore(query_.starts[i])) return {};
      if (!leadsOn(query_.starts[i])) continue;
      starts_ = query_.starts.subspan(i, 1);
      Attempt one = attempt();
      if (one.answer.outcome == Outcome::interrupted) return std::move(one.answer);
      if (one.answer.outcome == Outcome::undecided) tiedSums.push_back(one.sum);
      if (one.answer.outcome != Outcome::found) continue;
      ways.push_back({i, query_.starts[i].distance, one.sum, std::move(one.answer.path)});
    }
    return chooseFrom(ways, tiedSums);
  }

  // Ways that cost more than the margin above the cheapest do not matter.
  Answer chooseFrom(std::vector<StartWay>& ways, const std::vector<double>& tiedSums) const {
    double most = std::numeric_limits<double>::infinity();
    for (const StartWay& way : ways) most = std::min(most, way.sum + hierarchy_.bound_.margin());
    const auto matters = [&](double sum) { return sum <= most; };
    if (std::any_of(tiedSums.begin(), tiedSums.end(), matters)) return {};
    const auto isTooDear = [&](const StartWay& way) { return !matters(way.sum); };
    ways.erase(std::remove_if(ways.begin(), ways.end(), isTooDear), ways.end());
    if (ways.empty()) return {};
    const auto chosen = wayOfWaves(ways, places_);
    return chosen ? Answer{Outcome::found, std::move(ways[*chosen].path)} : Answer{};
  }

  Attempt attempt() {
    const double margin = hierarchy_.bound_.margin();
    if (hierarchy_.built_->labels) {
      HubSearch search(arcs_, *hierarchy_.built_->labels, margin, scratch_.search);
      if (!addEnds(search)) return {{Outcome::interrupted, {}}, 0};
      return attemptOf(search);
    }
    HierarchySearch search(arcs_, margin, query_.interrupted, scratch_.search);
    if (!addEnds(search) || !search.run()) return {{Outcome::interrupted, {}}, 0};
    return attemptOf(search);
  }

  // False when it was interrupted. Two targets in the same place are one for the search.
  template <typename Search>
  bool addEnds(Search& search) {
    for (const StartNode& start : starts_) {
      if (interrupted()) return false;
      if (leadsOn(start)) search.addStart(places_.placeOf(start.node), distanceOf(start.node));
    }
    std::vector<std::uint32_t>& added = scratch_.chain;
    added.clear();
    for (const std::uint32_t target : query_.targets) {
      if (interrupted()) return false;
      const std::uint32_t place = places_.placeOf(target);
      if (isAmong(dropped_, target) || isAmong(added, place)) continue;
      search.addTarget(place);
      added.push_back(place);
    }
    return true;
  }

  template <typename Search>
  Attempt attemptOf(const Search& search) {
    if (!search.found()) return {{Outcome::unreachable, {}}, 0};
    if (search.tied() || !hierarchy_.bound_.holdsFor(search.cost())) return {{}, search.cost()};
    search.gatherChain(scratch_.chain);
    return {spelledOut(), search.cost()};
  }

  bool isListedBefore(const StartNode& start) const {
    const auto same = [&](const StartNode& other) { return other.node == start.node; };
    return &*std::find_if(query_.starts.begin(), query_.starts.end(), same) != &start;
  }

  bool leadsOn(const StartNode& start) const {
    return !isListedBefore(start) && !isAmong(query_.targets, start.node);
  }

  Answer spelledOut() {
    Answer answer;
    answer.path.nodes.reserve(kUsualLength);
    beginAtStart(answer.path);
    for (std::size_t i = 0; i + 1 < scratch_.chain.size(); ++i) {
      spellOut(scratch_.chain[i], scratch_.chain[i + 1], answer.path);
    }
    if (!places_.walkToTarget(query_.targets, dropped_, answer.path)) return answer;
    answer.outcome = Outcome::found;
    return answer;
  }

  // The nearest start of the first place; two that are about as near would have been a tie.
  void beginAtStart(FoundPath& path) const {
    for (const StartNode& start : starts_) {
      if (places_.placeOf(start.node) != scratch_.chain.front() || !leadsOn(start)) continue;
      const double distance = distanceOf(start.node);
      if (!path.nodes.empty() && !(distance < path.cost)) continue;
      path.nodes.assign(1, start.node);
      path.cost = distance;
    }
  }

  // Depth first over the middles of shortcuts; `waiting` holds the places to come, last first.
  void spellOut(std::uint32_t from, std::uint32_t to, FoundPath& path) {
    std::vector<std::uint32_t>& waiting = scratch_.waiting;
    waiting.assign(1, to);
    while (!waiting.empty()) {
      const HierarchyArc& arc = arcBetween(from, waiting.back());
      if (arc.middle != HierarchyArc::kNoMiddle) {
        waiting.push_back(arc.middle);
        continue;
      }
      places_.walk(from, waiting.back(), arc.cost, path);
      from = waiting.back();
      waiting.pop_back();
    }
  }

  // There is one. Arcs to the core stand in the row of their lower end, arcs within it in both.
  const HierarchyArc& arcBetween(std::uint32_t from, std::uint32_t to) const {
    const std::uint32_t other = std::max(from, to);
    const std::uint32_t direction = from < to ? HierarchyArc::kForward : HierarchyArc::kBackward;
    const HierarchyArc* arc = arcs_.row(std::min(from, to)).data();
    while (arc->place() != other || (arc->bits & direction) == 0) ++arc;
    return *arc;
  }

  bool interrupted() const { return query_.interrupted.load(std::memory_order_relaxed); }

  const RoutingHierarchy& hierarchy_;
  const HierarchyArcs& arcs_;
  const HierarchyPlaces& places_;
  const SearchQuery& query_;
  std::span<const StartNode> starts_;  // those that are searched from
  Scratch& scratch_;
  std::vector<std::uint32_t> dropped_;  // targets
};

RoutingHierarchy::RoutingHierarchy(const SearchGraph& graph, bool barrierFree, std::size_t mostHubs,
                                   const std::atomic<bool>& interrupted)
    : bound_(graph, barrierFree) {
  Interruption interruption(interrupted);
  build(graph, barrierFree, mostHubs, interruption);
  if (interruption.seen()) built_.reset();
  wasInterrupted_ = interruption.seen();
}

void RoutingHierarchy::build(const SearchGraph& graph, bool barrierFree, std::size_t mostHubs,
                             Interruption& interruption) {
  const ZeroLinks links(graph, barrierFree, kLeastOfMargin * bound_.margin(), interruption);
  if (interruption.seen()) return;
  std::vector<std::uint32_t> rankOf;
  HierarchyArcs arcs = contracted(graph, barrierFree, links, bound_.margin(), rankOf, interruption);
  if (arcs.placeCount() == 0) return;
  HierarchyPlaces places(graph, barrierFree, links, rankOf);
  auto labels = HubLabels::build(arcs, bound_.margin(), mostHubs, interruption);
  built_ = std::make_unique<Built>(Built{std::move(arcs), std::move(places), std::move(labels)});
}

RoutingHierarchy::~RoutingHierarchy() = default;

RoutingHierarchy::Answer RoutingHierarchy::find(const SearchQuery& query) const {
  if (!built_) return {};
  const auto scratch =
      pool_.take([&] { return std::make_unique<Scratch>(built_->arcs.placeCount()); });
  return Run(*this, query, *scratch).find();
}

std::size_t RoutingHierarchy::memory() const {
  if (!built_) return 0;
  return built_->arcs.arcs.capacity() * sizeof(HierarchyArc) +
         built_->arcs.firstArc.capacity() * sizeof(std::uint32_t) + built_->places.memory() +
         (built_->labels ? built_->labels->memory() : 0);
}

std::uint32_t RoutingHierarchy::coreSize() const {
  return built_ ? built_->arcs.placeCount() - built_->arcs.coreBegin : 0;
}

}  // namespace KorvaniNavigation
