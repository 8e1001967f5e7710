#include "Import/Osm/OsmSelection.hpp"

namespace KorvaniTools {

void KeptWays::add(KeptWay way) {
  const auto [entry, fresh] = byId_.emplace(way.id, ways_.size());
  if (fresh) {
    ways_.push_back(std::move(way));
    return;
  }
  // Some services write a way once for its shape and once more with its tags.
  KeptWay& known = ways_[entry->second];
  if (known.tags.empty()) known.tags = std::move(way.tags);
  known.own = known.own || way.own;
}

const KeptWay* KeptWays::find(std::int64_t id) const {
  const auto entry = byId_.find(id);
  return entry == byId_.end() ? nullptr : &ways_[entry->second];
}

}  // namespace KorvaniTools
