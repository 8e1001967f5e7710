#pragma once

// Internal.

/// A priority queue of nodes by cost, cheapest first, for searches: a heap whose nodes have four
/// children. It is half as deep as one with two, and four keys side by side share a cache line.
///
/// A node whose cost falls is added again; whoever takes it out a second time passes over it.
/// That is cheaper here than to keep track of where each node is, since few costs fall.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace KorvaniNavigation {

class FourHeap {
 public:
  struct Entry {
    double cost;
    std::uint32_t node;
  };

  bool empty() const { return entries_.empty(); }
  void clear() { entries_.clear(); }

  /// The cheapest; there must be one.
  const Entry& top() const { return entries_.front(); }

  void push(double cost, std::uint32_t node) {
    std::size_t at = entries_.size();
    entries_.push_back({cost, node});
    while (at > 0) {
      const std::size_t above = (at - 1) / kChildren;
      if (!(cost < entries_[above].cost)) break;
      entries_[at] = entries_[above];
      at = above;
    }
    entries_[at] = {cost, node};
  }

  /// Takes the cheapest out; there must be one.
  void pop() {
    const Entry last = entries_.back();
    entries_.pop_back();
    if (entries_.empty()) return;
    std::size_t at = 0;
    for (std::size_t child = cheapestChild(0); child != 0; child = cheapestChild(at)) {
      if (!(entries_[child].cost < last.cost)) break;
      entries_[at] = entries_[child];
      at = child;
    }
    entries_[at] = last;
  }

 private:
  static constexpr std::size_t kChildren = 4;

  // 0 when there is none.
  std::size_t cheapestChild(std::size_t parent) const {
    const std::size_t first = parent * kChildren + 1;
    if (first >= entries_.size()) return 0;
    const std::size_t end = std::min(first + kChildren, entries_.size());
    std::size_t cheapest = first;
    for (std::size_t child = first + 1; child < end; ++child) {
      if (entries_[child].cost < entries_[cheapest].cost) cheapest = child;
    }
    return cheapest;
  }

  std::vector<Entry> entries_;
};

}  // namespace KorvaniNavigation
