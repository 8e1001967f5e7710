#include "Import/Osm/NodeTable.hpp"

#include <algorithm>

namespace KorvaniTools {

void NodeTable::seal() {
  std::stable_sort(entries_.begin(), entries_.end(),
                   [](const Entry& a, const Entry& b) { return a.id < b.id; });
  const auto end = std::unique(entries_.begin(), entries_.end(),
                               [](const Entry& a, const Entry& b) { return a.id == b.id; });
  entries_.erase(end, entries_.end());
  entries_.shrink_to_fit();
}

const NodeTable::Entry* NodeTable::entry(std::int64_t id) const {
  const auto found =
      std::lower_bound(entries_.begin(), entries_.end(), id,
                       [](const Entry& each, std::int64_t wanted) { return each.id < wanted; });
  return found == entries_.end() || found->id != id ? nullptr : &*found;
}

bool NodeTable::set(std::int64_t id, Coordinate coordinate) {
  const Entry* const found = entry(id);
  if (found == nullptr) return false;
  if (!found->known) {
    entries_[static_cast<std::size_t>(found - entries_.data())] = {id, coordinate, true};
  }
  return true;
}

const Coordinate* NodeTable::find(std::int64_t id) const {
  const Entry* const found = entry(id);
  return found == nullptr || !found->known ? nullptr : &found->coordinate;
}

}  // namespace KorvaniTools
