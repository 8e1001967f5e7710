#pragma once

/// A small random search problem: a graph, start points with distances, destinations.
///
/// It is kept as plain numbers, so that RapidCheck can shrink and print it, and so that the
/// textbook search needs no class of the engine.

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <vector>

#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniTest {

using Points = std::vector<std::shared_ptr<KorvaniNavigation::KRVNavPoint>>;

struct PathFindingCase {
  /// What an edge ends at: the node itself, or another object that leads on like the node.
  enum class End {
    node,
    twin,     ///< an equal object: the same identifier
    unnamed,  ///< an object without identifier
  };

  /// A later edge between the same two nodes replaces an earlier one.
  struct Edge {
    std::size_t from = 0;
    std::size_t to = 0;
    double distance = 0;
    double multiplicator = 1;
    bool isBarrierFree = true;
    End end = End::node;
  };

  struct Start {
    std::size_t node = 0;
    double distance = 0;
  };

  std::size_t nodeCount = 1;
  std::vector<Edge> edges;
  std::vector<Start> starts;
  std::vector<std::size_t> destinations;
  bool lookForBarrierFreeRoute = false;
};

std::ostream& operator<<(std::ostream& out, const PathFindingCase& problem);

/// The engine's objects of a case.
struct PathFindingWorld {
  explicit PathFindingWorld(const PathFindingCase& problem);

  std::shared_ptr<KorvaniNavigation::KRVNavGraph> graph;
  Points nodes;
  Points twins;
  Points unnamed;
  Points starts;
  std::vector<double> startDistances;
  Points destinations;

 private:
  void addNodes(const PathFindingCase& problem);
  void addEdges(const PathFindingCase& problem);
  const Points& endsOfKind(PathFindingCase::End end) const;
};

}  // namespace KorvaniTest
