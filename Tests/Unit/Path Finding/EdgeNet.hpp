#pragma once

/// A graph for searches on arrays, put together edge by edge.
///
///   EdgeNet net(3);
///   net.link(0, 1, 2.5);          // both ways
///   net.edge(1, 2, 4);            // one way
///   WaveSearch search(net.graph());

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <vector>

#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"

namespace KorvaniTest {

class EdgeNet {
 public:
  explicit EdgeNet(std::uint32_t nodeCount) : nodeCount_(nodeCount) {}

  void edge(std::uint32_t from, std::uint32_t to, double cost, bool barrierFree = true) {
    edges_.push_back({from, to, cost, barrierFree});
  }

  void link(std::uint32_t a, std::uint32_t b, double cost, bool barrierFree = true) {
    edge(a, b, cost, barrierFree);
    edge(b, a, cost, barrierFree);
  }

  /// Refers to the net, which must not change any more.
  const KorvaniNavigation::SearchGraph& graph() {
    const auto before = [](const Edge& a, const Edge& b) { return a.from < b.from; };
    std::stable_sort(edges_.begin(), edges_.end(), before);
    firstEdge_.assign(nodeCount_ + 1, 0);
    target_.clear();
    cost_.clear();
    barrierFree_.clear();
    for (const Edge& edge : edges_) {
      target_.push_back(edge.to);
      cost_.push_back(edge.cost);
      barrierFree_.push_back(edge.barrierFree ? 1 : 0);
      firstEdge_[edge.from + 1] = static_cast<std::uint32_t>(target_.size());
    }
    for (std::uint32_t node = 0; node < nodeCount_; ++node) {
      firstEdge_[node + 1] = std::max(firstEdge_[node], firstEdge_[node + 1]);
    }
    graph_ = {firstEdge_, target_, cost_, barrierFree_};
    return graph_;
  }

 private:
  struct Edge {
    std::uint32_t from;
    std::uint32_t to;
    double cost;
    bool barrierFree;
  };

  std::uint32_t nodeCount_;
  std::vector<Edge> edges_;
  std::vector<std::uint32_t> firstEdge_;
  std::vector<std::uint32_t> target_;
  std::vector<double> cost_;
  std::vector<std::uint8_t> barrierFree_;
  KorvaniNavigation::SearchGraph graph_;
};

}  // namespace KorvaniTest
