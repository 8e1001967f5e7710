#pragma once

/// Graphs for searches, drawn from seeds: from all kinds of small nets to floors of a building.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"
#include "SeededNumbers.hpp"

namespace KorvaniTest {

enum class NetKind {
  wholeLengths,        ///< few whole numbers: ties everywhere
  anyLengths,          ///< no two ways alike
  nothingAmongOthers,  ///< two edges in five cost nothing
  onlyNothing,         ///< every edge costs nothing
  nearTies,            ///< lengths that differ by the last bits, or by a ten-millionth
  tenths,              ///< sums that round differently in each order
  tree,                ///< a tree with a few more edges, half of them for nothing
  tinyAndHuge,         ///< lengths from 1e-300 to 1e15
  grid,                ///< a regular grid
  bentGrid,            ///< a grid of uneven lengths
  floors,         ///< corridors with rooms on several levels, uneven, with doors that cost nothing
  regularFloors,  ///< the same with all lengths alike
};

constexpr int kNetKinds = 12;

std::string nameOf(NetKind kind);

/// A graph as plain edges, and in arrays.
class SearchNet {
 public:
  SearchNet(NetKind kind, SeededNumbers& numbers);

  std::uint32_t nodeCount() const { return nodeCount_; }
  std::uint32_t edgeCount() const { return static_cast<std::uint32_t>(target_.size()); }

  /// Where an edge begins.
  std::uint32_t beginOf(std::uint32_t edge) const;

  /// A length of the kind, as for the distance of a start.
  double length(SeededNumbers& numbers) const;

  /// Refers to this object.
  KorvaniNavigation::SearchGraph arrays() const {
    return {firstEdge_, target_, cost_, barrierFree_};
  }

 private:
  struct Edge {
    std::uint32_t from;
    std::uint32_t to;
    double cost;
    bool barrierFree;
  };

  std::uint32_t newNode() { return nodeCount_++; }
  void join(std::uint32_t from, std::uint32_t to, double cost, bool barrierFree = true);
  void joinBothWays(std::uint32_t a, std::uint32_t b, double cost, bool barrierFree = true);
  void drawSmall(SeededNumbers& numbers);
  void drawTree(SeededNumbers& numbers);
  void drawGrid(SeededNumbers& numbers);
  void drawFloors(SeededNumbers& numbers);
  std::vector<std::uint32_t> drawFloor(SeededNumbers& numbers);
  void drawStretch(std::uint32_t from, std::uint32_t to, SeededNumbers& numbers);
  double even(double length, SeededNumbers& numbers) const;
  void shuffle(SeededNumbers& numbers);
  void fillArrays();

  NetKind kind_;
  std::uint32_t nodeCount_ = 0;
  std::vector<Edge> edges_;
  std::vector<std::uint32_t> firstEdge_;
  std::vector<std::uint32_t> target_;
  std::vector<double> cost_;
  std::vector<std::uint8_t> barrierFree_;
};

}  // namespace KorvaniTest
