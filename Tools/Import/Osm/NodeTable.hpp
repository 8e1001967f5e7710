#pragma once

#include <cstdint>
#include <vector>

#include "Building/Rectangle.hpp"

namespace KorvaniTools {

/// Positions of nodes by their ids, for the nodes that are needed only: 32 bytes each.
///
/// First all ids are named with `need` or `put`, then `seal` is called once, then positions are set
/// and found. Cost: logarithmic for `set` and `find`.
class NodeTable {
 public:
  void need(std::int64_t id) { entries_.push_back({id, {}, false}); }

  /// Names a node together with its position.
  void put(std::int64_t id, Coordinate coordinate) { entries_.push_back({id, coordinate, true}); }

  void seal();

  /// Sets a node's position unless it has one; false when it is not needed.
  bool set(std::int64_t id, Coordinate coordinate);

  bool needs(std::int64_t id) const { return entry(id) != nullptr; }
  bool empty() const { return entries_.empty(); }

  /// Null for a node that is not needed or has no position. Valid until the next `need`.
  const Coordinate* find(std::int64_t id) const;

 private:
  struct Entry {
    std::int64_t id = 0;
    Coordinate coordinate;
    bool known = false;
  };
  const Entry* entry(std::int64_t id) const;

  std::vector<Entry> entries_;
};

}  // namespace KorvaniTools
