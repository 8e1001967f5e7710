#include "Navigation/Path Finding/Arrays/WaveSearch.hpp"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace KorvaniNavigation {

namespace {

constexpr std::uint32_t kNoWay = std::numeric_limits<std::uint32_t>::max();

}  // namespace

struct WaveSearch::Scratch {
  struct Node {
    double cost = 0;
    std::uint32_t way = kNoWay;
    std::uint32_t labelled = 0;  // the search that set the label
    std::uint32_t listed = 0;    // the wave that took the node up
    std::uint32_t target = 0;    // the search whose target it is
  };

  // Its last node, the way that it prolongs, and what it costs.
  struct Way {
    std::uint32_t node;
    std::uint32_t before;
    double cost;
  };

  explicit Scratch(std::uint32_t nodeCount) : nodes(nodeCount) {}

  void begin() {
    // Both counters start again before they can wrap: a search has fewer than 2^31 waves.
    if (search >= kNoWay - 1 || wave >= kNoWay / 2) {
      std::fill(nodes.begin(), nodes.end(), Node{});
      search = 0;
      wave = 0;
    }
    ++search;
    ways.clear();
    current.clear();
  }

  std::vector<Node> nodes;
  std::vector<Way> ways;
  std::vector<std::uint32_t> current;
  std::vector<std::uint32_t> next;
  std::uint32_t search = 0;
  std::uint32_t wave = 0;
};

class WaveSearch::Run {
 public:
  Run(const SearchGraph& graph, const SearchQuery& query, Scratch& scratch)
      : graph_(graph), query_(query), scratch_(scratch) {}

  std::optional<FoundPath> find() {
    scratch_.begin();
    for (const std::uint32_t node : query_.targets) scratch_.nodes[node].target = scratch_.search;
    for (const StartNode& start : query_.starts) {
      label(start.node, kNoWay, start.distance);
      scratch_.current.push_back(start.node);
    }
    while (!scratch_.current.empty() && !nothingCheaper()) {
      if (!wave()) return std::nullopt;
    }
    return spelledOut();
  }

 private:
  // False when it was interrupted.
  bool wave() {
    ++scratch_.wave;
    scratch_.next.clear();
    for (const std::uint32_t node : scratch_.current) {
      if (interrupted()) return false;
      if (scratch_.nodes[node].target == scratch_.search) continue;
      if (!expand(node)) return false;
    }
    if (interrupted()) return false;
    std::swap(scratch_.current, scratch_.next);
    return true;
  }

  // Whether all waves to come cost at least as much as the best way: costs only grow.
  bool nothingCheaper() const {
    if (best_ == kNoWay) return false;
    const double best = scratch_.ways[best_].cost;
    const auto cheaper = [&](std::uint32_t node) { return scratch_.nodes[node].cost < best; };
    return std::none_of(scratch_.current.begin(), scratch_.current.end(), cheaper);
  }

  bool expand(std::uint32_t node) {
    const std::uint32_t end = graph_.firstEdge[node + 1];
    for (std::uint32_t edge = graph_.firstEdge[node]; edge != end; ++edge) {
      if (interrupted()) return false;
      if (query_.barrierFree && graph_.barrierFree[edge] == 0) continue;
      relax(node, edge);
    }
    return true;
  }

  // The label of the node is read anew for each edge: an edge may lead back to its own node.
  void relax(std::uint32_t node, std::uint32_t edge) {
    const std::uint32_t end = graph_.target[edge];
    const double cost = graph_.cost[edge] + scratch_.nodes[node].cost;
    Scratch::Node& old = scratch_.nodes[end];
    if (old.labelled == scratch_.search && !(cost < old.cost)) return;
    if (old.listed != scratch_.wave) {
      old.listed = scratch_.wave;
      scratch_.next.push_back(end);
    }
    label(end, scratch_.nodes[node].way, cost);
    if (old.target != scratch_.search) return;
    if (best_ == kNoWay || cost < scratch_.ways[best_].cost) best_ = old.way;
  }

  void label(std::uint32_t node, std::uint32_t before, double cost) {
    Scratch::Node& labelled = scratch_.nodes[node];
    labelled.labelled = scratch_.search;
    labelled.cost = cost;
    labelled.way = static_cast<std::uint32_t>(scratch_.ways.size());
    scratch_.ways.push_back({node, before, cost});
  }

  std::optional<FoundPath> spelledOut() const {
    if (best_ == kNoWay) return std::nullopt;
    FoundPath path;
    path.cost = scratch_.ways[best_].cost;
    for (std::uint32_t at = best_; at != kNoWay; at = scratch_.ways[at].before) {
      path.nodes.push_back(scratch_.ways[at].node);
    }
    std::reverse(path.nodes.begin(), path.nodes.end());
    return path;
  }

  bool interrupted() const { return query_.interrupted.load(std::memory_order_relaxed); }

  const SearchGraph& graph_;
  const SearchQuery& query_;
  Scratch& scratch_;
  std::uint32_t best_ = kNoWay;
};

WaveSearch::WaveSearch(const SearchGraph& graph) : graph_(graph) {}

WaveSearch::~WaveSearch() = default;

std::optional<FoundPath> WaveSearch::find(const SearchQuery& query) const {
  const auto scratch = pool_.take([&] { return std::make_unique<Scratch>(graph_.nodeCount()); });
  return Run(graph_, query, *scratch).find();
}

}  // namespace KorvaniNavigation
