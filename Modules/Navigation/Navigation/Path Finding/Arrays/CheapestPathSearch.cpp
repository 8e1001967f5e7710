#include "Navigation/Path Finding/Arrays/CheapestPathSearch.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "Navigation/Path Finding/Arrays/FourHeap.hpp"

namespace KorvaniNavigation {

namespace {

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

// Metres. An edge that comes to a node with no more than this beyond the node's label is kept for
// the proof. It must exceed what rounding can hide, which a search checks in the end, and should be
// far below what tells two corridors apart.
constexpr double kClose = 0x1p-20;

constexpr double kRounding = 0x1p-53;

// How far the proof may look, beyond a few steps for each node of the way.
constexpr std::size_t kProofSteps = 256;
constexpr std::size_t kProofStepsPerNode = 16;

}  // namespace

struct CheapestPathSearch::Scratch {
  struct Node {
    double cost = 0;
    std::uint32_t search = 0;      // the search that the rest belongs to
    std::uint32_t before = kNone;  // none: the label is that of a start
    std::uint32_t edge = kNone;    // from `before`
    std::uint32_t close = kNone;   // first of its close edges
    bool labelled = false;
    bool settled = false;
    bool start = false;
    bool target = false;
    bool onWay = false;
  };

  // Another edge by which a node is reached at nearly its label. Without an edge: the node is a
  // start, and its own distance is that close.
  struct CloseEdge {
    std::uint32_t before;
    std::uint32_t edge;
    std::uint32_t next;
  };

  // A node of the way that the proof tries, from the target backwards.
  struct Step {
    std::uint32_t node;
    std::uint32_t edge;   // from the next step's node to this one; none at a start
    std::uint32_t close;  // the next close edge to try
    double excess;        // what the way costs beyond the labels, from here to the target
    bool labelTried;      // whether the edge of the label was tried
  };

  explicit Scratch(std::uint32_t nodeCount) : nodes(nodeCount) {}

  void begin() {
    if (++search == 0) {
      std::fill(nodes.begin(), nodes.end(), Node{});
      search = 1;
    }
    heap.clear();
    closeEdges.clear();
    steps.clear();
  }

  Node& at(std::uint32_t index) {
    Node& node = nodes[index];
    if (node.search != search) {
      node = Node{};
      node.search = search;
    }
    return node;
  }

  std::vector<Node> nodes;
  std::vector<CloseEdge> closeEdges;
  std::vector<Step> steps;
  FourHeap heap;
  std::uint32_t search = 0;
};

class CheapestPathSearch::Run {
 public:
  enum class End { settled, interrupted, overflow };

  Run(const SearchGraph& graph, const SearchQuery& query, Scratch& scratch)
      : graph_(graph), query_(query), scratch_(scratch) {}

  End settleNodes();

  // What the cheapest way to a target costs; infinite when there is none.
  double optimum() const { return best_; }

  bool provedUnique();
  FoundPath spelledOut();

 private:
  using Node = Scratch::Node;
  using Step = Scratch::Step;

  void begin();
  End expand(std::uint32_t index);
  void relax(std::uint32_t index, std::uint32_t edge, double cost);
  void keepClose(Node& node, std::uint32_t before, std::uint32_t edge);

  bool onlyOneTarget();
  double hiddenByRounding() const;
  bool anotherWay(std::size_t maxSteps, bool& gaveUp);
  bool advance();
  bool tryEdge(Step& step, std::uint32_t before, std::uint32_t edge);
  bool costsNoMore() const;
  double startDistance(std::uint32_t index) const;

  bool interrupted() const { return query_.interrupted.load(std::memory_order_relaxed); }

  const SearchGraph& graph_;
  const SearchQuery& query_;
  Scratch& scratch_;
  double best_ = std::numeric_limits<double>::infinity();
  std::uint32_t target_ = kNone;
  std::size_t settledCount_ = 0;
};

void CheapestPathSearch::Run::begin() {
  scratch_.begin();
  for (const std::uint32_t target : query_.targets) scratch_.at(target).target = true;
  for (const StartNode& start : query_.starts) {
    Node& node = scratch_.at(start.node);
    node.start = true;
    node.labelled = true;
    node.cost = start.distance;
  }
  for (const StartNode& start : query_.starts) {
    scratch_.heap.push(scratch_.at(start.node).cost, start.node);
  }
}

// Nodes that cost as much as the target are settled too: an edge of length zero may lead from them
// to the target, or to another one.
CheapestPathSearch::Run::End CheapestPathSearch::Run::settleNodes() {
  begin();
  while (!scratch_.heap.empty()) {
    const FourHeap::Entry top = scratch_.heap.top();
    if (top.cost > best_) break;
    scratch_.heap.pop();
    Node& node = scratch_.nodes[top.node];
    if (node.settled || top.cost > node.cost) continue;
    if (interrupted()) return End::interrupted;
    node.settled = true;
    ++settledCount_;
    if (node.target) continue;
    const End end = expand(top.node);
    if (end != End::settled) return end;
  }
  return End::settled;
}

CheapestPathSearch::Run::End CheapestPathSearch::Run::expand(std::uint32_t index) {
  const double from = scratch_.nodes[index].cost;
  const std::uint32_t end = graph_.firstEdge[index + 1];
  for (std::uint32_t edge = graph_.firstEdge[index]; edge != end; ++edge) {
    if (interrupted()) return End::interrupted;
    if (query_.barrierFree && graph_.barrierFree[edge] == 0) continue;
    const double cost = graph_.cost[edge] + from;
    if (cost > best_) continue;  // on no way that costs as little as the best one
    if (std::isinf(cost)) return End::overflow;
    relax(index, edge, cost);
  }
  return End::settled;
}

void CheapestPathSearch::Run::relax(std::uint32_t index, std::uint32_t edge, double cost) {
  const std::uint32_t to = graph_.target[edge];
  Node& node = scratch_.at(to);
  if (node.labelled) {
    const double excess = cost - node.cost;
    if (!(excess < 0)) {
      // A start keeps its own distance against every way that costs as much, so that no way leads
      // on through it.
      const bool unbeatenStart = node.before == kNone;
      if (excess <= kClose && !unbeatenStart && to != index) keepClose(node, index, edge);
      return;
    }
    if (-excess <= kClose) keepClose(node, node.before, node.edge);
  }
  node.labelled = true;
  node.cost = cost;
  node.before = index;
  node.edge = edge;
  scratch_.heap.push(cost, to);
  if (node.target && cost < best_) best_ = cost;
}

void CheapestPathSearch::Run::keepClose(Node& node, std::uint32_t before, std::uint32_t edge) {
  scratch_.closeEdges.push_back({before, edge, node.close});
  node.close = static_cast<std::uint32_t>(scratch_.closeEdges.size() - 1);
}

// Every way of the same cost consists of nodes whose labels cost no more than it, so of settled
// ones, and of edges whose excess over the labels is, in sum, no more than rounding hides.
bool CheapestPathSearch::Run::provedUnique() {
  if (!onlyOneTarget()) return false;
  if (!(hiddenByRounding() <= kClose)) return false;
  std::size_t length = 0;
  for (std::uint32_t at = target_; at != kNone; at = scratch_.nodes[at].before) ++length;
  bool gaveUp = false;
  return !anotherWay(kProofSteps + kProofStepsPerNode * length, gaveUp) && !gaveUp;
}

bool CheapestPathSearch::Run::onlyOneTarget() {
  for (const std::uint32_t target : query_.targets) {
    const Node& node = scratch_.at(target);
    const bool reached = node.labelled && node.before != kNone;
    if (!reached || node.cost > best_ || target == target_) continue;
    if (target_ != kNone) return false;
    target_ = target;
  }
  return true;
}

// A sum of n costs is off by at most n roundings of its result. The factor is reserve, for the
// differences that are summed here as well.
double CheapestPathSearch::Run::hiddenByRounding() const {
  return 8 * kRounding * best_ * static_cast<double>(settledCount_ + 1);
}

// Tries all ways, depth first, from the target backwards. The first one to reach its start is the
// one that the labels give; a second one that costs no more is a tie.
bool CheapestPathSearch::Run::anotherWay(std::size_t maxSteps, bool& gaveUp) {
  std::size_t complete = 0;
  std::vector<Step>& steps = scratch_.steps;
  steps.push_back({target_, kNone, scratch_.nodes[target_].close, 0, false});
  scratch_.nodes[target_].onWay = true;
  for (std::size_t count = 0; !steps.empty(); ++count) {
    if (count > maxSteps || interrupted()) {
      gaveUp = true;
      return false;
    }
    if (advance()) {
      if (complete > 0 && costsNoMore()) return true;
      ++complete;
    }
  }
  return false;
}

// Prolongs the way by one node or, when there is nothing left to try, takes its last node back.
// True when the way is complete: its last node is a start.
bool CheapestPathSearch::Run::advance() {
  Step& step = scratch_.steps.back();
  const Node& node = scratch_.nodes[step.node];
  if (!step.labelTried) {
    step.labelTried = true;
    return tryEdge(step, node.before, node.edge);
  }
  if (step.close != kNone) {
    const Scratch::CloseEdge close = scratch_.closeEdges[step.close];
    step.close = close.next;
    // A parallel edge gives the same nodes.
    if (close.before == node.before) return false;
    return tryEdge(step, close.before, close.edge);
  }
  scratch_.nodes[step.node].onWay = false;
  scratch_.steps.pop_back();
  return false;
}

bool CheapestPathSearch::Run::tryEdge(Step& step, std::uint32_t before, std::uint32_t edge) {
  step.edge = edge;
  if (before == kNone) return true;
  Node& node = scratch_.nodes[before];
  if (node.onWay || !node.settled) return false;
  const double excess =
      step.excess + ((graph_.cost[edge] + node.cost) - scratch_.nodes[step.node].cost);
  if (excess > hiddenByRounding()) return false;
  node.onWay = true;
  scratch_.steps.push_back({before, kNone, node.close, excess, false});
  return false;
}

// What the complete way costs, added as a search adds it.
bool CheapestPathSearch::Run::costsNoMore() const {
  const std::vector<Step>& steps = scratch_.steps;
  double cost = startDistance(steps.back().node);
  for (std::size_t i = steps.size() - 1; i > 0; --i) {
    cost = graph_.cost[steps[i - 1].edge] + cost;
    if (cost > best_) return false;
    const std::uint32_t node = steps[i - 1].node;
    if (scratch_.nodes[node].start && !(cost < startDistance(node))) return false;
  }
  return true;
}

double CheapestPathSearch::Run::startDistance(std::uint32_t index) const {
  double distance = 0;
  for (const StartNode& start : query_.starts) {
    if (start.node == index) distance = start.distance;
  }
  return distance;
}

FoundPath CheapestPathSearch::Run::spelledOut() {
  FoundPath path;
  path.cost = best_;
  for (std::uint32_t at = target_; at != kNone; at = scratch_.nodes[at].before) {
    path.nodes.push_back(at);
  }
  std::reverse(path.nodes.begin(), path.nodes.end());
  return path;
}

CheapestPathSearch::CheapestPathSearch(const SearchGraph& graph) : graph_(graph), waves_(graph) {}

CheapestPathSearch::~CheapestPathSearch() = default;

std::optional<FoundPath> CheapestPathSearch::find(const SearchQuery& query, Proof* proof) const {
  if (proof != nullptr) *proof = Proof::unique;
  const auto scratch = pool_.take([&] { return std::make_unique<Scratch>(graph_.nodeCount()); });
  Run run(graph_, query, *scratch);
  const Run::End end = run.settleNodes();
  if (end == Run::End::interrupted) return std::nullopt;
  if (end == Run::End::settled) {
    if (std::isinf(run.optimum())) return std::nullopt;
    if (run.provedUnique()) return run.spelledOut();
  }
  if (proof != nullptr) *proof = Proof::tied;
  if (end == Run::End::overflow) return waves_.find(query);
  return waves_.find(query, run.optimum());
}

}  // namespace KorvaniNavigation
