#pragma once

// Internal. The nodes in wedges with one tip: what shadows leave open of areas they hide.
//
//   NodesInWedges wedges(tree, tip);
//   wedges.add(wedge);
//   for (std::uint32_t place : wedges.take(reach)) ...
//
// Few wedges are gone along one by one, from cell to cell, or from box to box where nodes crowd in
// few cells. Where there are so many of them that this would take longer, all nodes are sorted by
// their directions once, coarsely and four at a time, which takes about two nanoseconds a node
// however many wedges there are.
//
// One thread at a time.

#include <cstdint>
#include <vector>

#include "Navigation/Localisation/NodeTree.hpp"
#include "Navigation/Localisation/Wedge.hpp"

namespace KorvaniNavigation {

class NodesInWedges {
 public:
  NodesInWedges(const NodeTree& tree, MKMapPoint tip);

  void add(const Wedge& wedge);

  // Whether there are so many that all nodes will be sorted: how long another one is no longer
  // matters.
  bool areMany() const;

  // The places in the tree of all nodes in boxes that are in one of the wedges added since the last
  // call, and not farther than `reach`; some of them perhaps twice, and some that are in none.
  std::vector<std::uint32_t> take(double reach);

  bool isEmpty() const { return wedges_.empty(); }

 private:
  using Places = std::vector<std::uint32_t>;

  void findBySorting(Places& found) const;
  void findByCells(const Wedge& wedge, Places& found) const;
  void findByBoxes(const Wedge& wedge, std::uint32_t box, Places& found) const;

  const NodeTree& tree_;
  MKMapPoint tip_;
  std::vector<Wedge> wedges_;
  double mostCells_;      // that a wedge goes through, about
  double cellCount_ = 0;  // the same of all of them
};

}  // namespace KorvaniNavigation
