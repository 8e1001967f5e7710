#pragma once

/// Internal. A sparse graph in which ways are hardly longer than straight lines.

#include <cstddef>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "FloorPlan/LocalFrame.hpp"

namespace KorvaniTools {

/// Points, and edges between some of them.
///
/// Candidates are taken shortest first, and one becomes an edge only where the way that is there
/// already is more than 1.05 times as long, and the two see each other: what is left of a corridor
/// is a chain, not a web.
class Spanner {
 public:
  using Pair = std::pair<std::size_t, std::size_t>;  ///< the lower index first
  using Sees = std::function<bool(std::size_t, std::size_t)>;

  std::size_t add(GroundPoint at);
  const std::vector<GroundPoint>& points() const { return points_; }

  void join(std::size_t a, std::size_t b);
  void removeEdges();

  /// Of `among`, every pair when there are no more than 150, else each with its 40 nearest.
  std::vector<Pair> candidates(const std::vector<std::size_t>& among) const;

  /// Cost: a search of the neighbourhood and at most one question for each candidate.
  void fill(const std::vector<Pair>& candidates, const Sees& sees);

  /// Joins what does not hang together yet, shortest candidates first.
  void bridge(const std::vector<Pair>& candidates, const Sees& sees);

  /// Whether all of `points` hang together.
  bool connects(const std::vector<std::size_t>& points) const;

  /// The edges on shortest ways between `ends`; with more than 300 ends all edges but those
  /// that lead to dead ends.
  std::set<Pair> edgesBetween(const std::vector<std::size_t>& ends) const;

 private:
  struct Way {
    std::vector<double> distance;
    std::vector<std::size_t> before;
  };

  using Candidates = std::vector<std::pair<double, Pair>>;

  Candidates inOrder(const std::vector<Pair>& pairs) const;
  bool shorterWay(std::size_t from, std::size_t to, double limit);
  Way waysFrom(std::size_t from) const;
  std::set<Pair> withoutDeadEnds(const std::vector<std::size_t>& ends) const;

  std::vector<GroundPoint> points_;
  std::vector<std::vector<std::pair<std::size_t, double>>> edges_;
  std::vector<double> reached_;  ///< of the search that goes on
};

}  // namespace KorvaniTools
