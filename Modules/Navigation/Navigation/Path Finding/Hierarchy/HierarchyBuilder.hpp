#pragma once

// Internal.

/// Contracts the places of a graph one after the other and so makes the arcs of a hierarchy.
///
/// To contract a place is to take it out of the graph and to put in a shortcut for each way of two
/// arcs over it, unless another way is cheaper by more than a margin. Of two arcs between the same
/// places whose costs lie within the margin one stays and is called tied. So of all ways whose
/// costs are within the margin of the cheapest none is lost without a trace, and a cheapest way
/// over arcs that are not tied is the only one. An arc's cost is the sum of its edges in another
/// order than that of walking; the margin must be wider than the roundings of all sums.
///
/// Places with few arcs go first, which are dead ends and the middles of corridors, and among them
/// those near which little was contracted. When every place that is left has many arcs the rest
/// stays as it is, the core: grids would take ever more shortcuts.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Navigation/Path Finding/Arrays/Interruption.hpp"
#include "Navigation/Path Finding/Hierarchy/HierarchyArcs.hpp"

namespace KorvaniNavigation {

class HierarchyBuilder {
 public:
  /// @param interruption is read for each place; must outlive the object
  HierarchyBuilder(std::uint32_t placeCount, double margin, Interruption& interruption);

  /// An edge of the graph; none from a place to itself.
  void addEdge(std::uint32_t from, std::uint32_t to, double cost);

  /// Contracts. Once. Gives no places when it is interrupted, and when the hierarchy is of no use:
  /// when there are so many ties that it would leave most questions open, and when so much is left
  /// uncontracted that a search without hierarchy is faster.
  /// @param rankOf receives the number that each place got
  HierarchyArcs build(std::vector<std::uint32_t>& rankOf);

 private:
  struct Row {
    std::uint32_t begin = 0;
    std::uint32_t size = 0;
    std::uint32_t capacity = 0;
  };

  HierarchyArc* arcsOf(std::uint32_t place) { return store_.data() + rows_[place].begin; }
  void append(std::uint32_t place, const HierarchyArc& arc);
  void removeAt(std::uint32_t place, std::uint32_t index);
  void merge(std::uint32_t place, HierarchyArc arc);
  void split(std::uint32_t place, std::uint32_t index, std::uint32_t directions);
  void tie(HierarchyArc& old, const HierarchyArc& arc);
  void join(std::uint32_t place, const HierarchyArc& arc);
  void connect(std::uint32_t from, std::uint32_t to, HierarchyArc arc);

  std::uint32_t keyOf(std::uint32_t place) const;
  void queue(std::uint32_t place);
  bool takeNext(std::uint32_t& place);

  void contract(std::uint32_t place);
  void takeOut(std::uint32_t place);
  void bridge(std::uint32_t middle, std::size_t index);
  void findWitnesses(std::uint32_t from, double limit);
  bool witnessed(std::uint32_t to, double cost) const;
  bool contractAll();
  bool isInAGrid(std::uint32_t place) const;
  bool coreIsTooLarge() const;
  void keepCore();
  void number(std::vector<std::uint32_t>& rankOf);
  void translate(std::vector<std::uint32_t>& rankOf);

  const double margin_;
  Interruption& interruption_;
  std::vector<Row> rows_;
  std::vector<HierarchyArc> store_;
  std::vector<std::uint32_t> key_;
  std::vector<std::uint32_t> level_;
  std::vector<std::vector<std::uint32_t>> buckets_;
  std::size_t lowest_ = 0;
  std::size_t ties_ = 0;
  std::vector<HierarchyArc> taken_;     // the arcs of the place that is being contracted
  std::vector<std::uint32_t> order_;    // the places as they were contracted
  std::vector<std::uint32_t> orderOf_;  // where each of them is in that order
  HierarchyArcs result_;

  struct Reached {
    double cost = 0;
    std::uint32_t search = 0;
  };
  struct Waiting {
    double cost;
    std::uint32_t place;
  };
  std::vector<Reached> reached_;
  std::vector<Waiting> waiting_;
  std::uint32_t witnessSearch_ = 0;
};

}  // namespace KorvaniNavigation
