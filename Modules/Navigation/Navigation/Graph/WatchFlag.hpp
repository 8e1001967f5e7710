#pragma once

#include <atomic>
#include <cstdint>

namespace KorvaniNavigation {

/// For whom something has been compiled from an object, so that its changes count: for nobody, for
/// one graph, or for everybody.
///
/// Part of the objects of a graph; see Graph/GraphAccess.hpp for what it is good for. It never goes
/// back: an object that two graphs watch is watched for everybody from then on. A flag is not
/// copied with its object.
///
/// Thread safety: any thread at any time.
class WatchFlag {
 public:
  /// The number of a graph, or one of the two below. Graphs may share a number; each of them then
  /// takes the changes of the others for its own.
  using Watcher = std::uint8_t;
  static constexpr Watcher kNobody = 0;
  static constexpr Watcher kEverybody = 255;

  WatchFlag() = default;
  WatchFlag(const WatchFlag&) = delete;
  WatchFlag& operator=(const WatchFlag&) = delete;

  void set(Watcher watcher) const {
    Watcher before = kNobody;
    if (watcher_.compare_exchange_strong(before, watcher) || before == watcher) return;
    watcher_.store(kEverybody);
  }

  Watcher watcher() const { return watcher_.load(); }

 private:
  mutable std::atomic<Watcher> watcher_{kNobody};
};

}  // namespace KorvaniNavigation
