#include "PathFindingTextbook.hpp"

#include <functional>
#include <limits>
#include <map>
#include <queue>
#include <utility>

namespace KorvaniTest {

namespace {

constexpr double kUnreached = std::numeric_limits<double>::infinity();

class Textbook {
 public:
  explicit Textbook(const PathFindingCase& problem)
      : cost_(problem.nodeCount, kUnreached),
        isDestination_(problem.nodeCount, false),
        cameByEdge_(problem.nodeCount, false),
        edges_(problem.nodeCount) {
    for (const std::size_t node : problem.destinations) isDestination_[node] = true;
    for (const auto& edge : problem.edges) {
      const bool usable = edge.isBarrierFree || !problem.lookForBarrierFreeRoute;
      edges_[edge.from][edge.to] = usable ? edge.multiplicator * edge.distance : kUnreached;
    }
    for (const auto& start : problem.starts) cost_[start.node] = start.distance;
    for (const auto& start : problem.starts) queue_.push({cost_[start.node], start.node});
  }

  std::optional<double> run() {
    while (!queue_.empty()) {
      const double cost = queue_.top().first;
      const std::size_t node = queue_.top().second;
      queue_.pop();
      if (cost > cost_[node]) continue;
      if (!isDestination_[node]) {
        expand(node);
      } else if (cameByEdge_[node]) {
        return cost;
      }
    }
    return std::nullopt;
  }

 private:
  void expand(std::size_t node) {
    for (const auto& edge : edges_[node]) {
      const double cost = cost_[node] + edge.second;
      if (!(cost < cost_[edge.first])) continue;
      cost_[edge.first] = cost;
      cameByEdge_[edge.first] = true;
      queue_.push({cost, edge.first});
    }
  }

  using Entry = std::pair<double, std::size_t>;

  std::vector<double> cost_;
  std::vector<bool> isDestination_;
  std::vector<bool> cameByEdge_;
  std::vector<std::map<std::size_t, double>> edges_;
  std::priority_queue<Entry, std::vector<Entry>, std::greater<>> queue_;
};

}  // namespace

std::optional<double> textbookCost(const PathFindingCase& problem) {
  return Textbook(problem).run();
}

}  // namespace KorvaniTest
