#include "Navigation/Graph/GraphChanges.hpp"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace KorvaniNavigation {

GraphChanges& graphChanges(WatchFlag::Watcher watcher) {
  static auto* const changes =
      new std::array<GraphChanges, std::size_t{WatchFlag::kEverybody} + 1>();
  return (*changes)[watcher];
}

void noteChange(const WatchFlag& flag, KorvaniCommon::Revision GraphChanges::*kind) {
  const WatchFlag::Watcher watcher = flag.watcher();
  if (watcher != WatchFlag::kNobody) (graphChanges(watcher).*kind).changed();
}

WatchFlag::Watcher nextWatcher() {
  static std::atomic<std::uint32_t> graphs{0};
  constexpr std::uint32_t kNumbers = WatchFlag::kEverybody - 1;
  return static_cast<WatchFlag::Watcher>(1 + graphs.fetch_add(1) % kNumbers);
}

}  // namespace KorvaniNavigation
