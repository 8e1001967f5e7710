#pragma once

#include <atomic>

#include "Common/Revision.hpp"

namespace KorvaniNavigation {

/// Whether something has been compiled from an object, so that its changes count.
///
/// Part of the objects of a graph; see Graph/GraphAccess.hpp for what it is good for. Constant once
/// set. A flag is not copied with its object.
///
/// Thread safety: any thread at any time.
class WatchFlag {
 public:
  WatchFlag() = default;
  WatchFlag(const WatchFlag&) = delete;
  WatchFlag& operator=(const WatchFlag&) = delete;

  void set() const { isSet_.store(true); }

  /// To be called after a change of the object: stamps `revision` if the object is watched.
  void changed(KorvaniCommon::Revision& revision) const {
    if (isSet_.load()) revision.changed();
  }

 private:
  mutable std::atomic<bool> isSet_{false};
};

}  // namespace KorvaniNavigation
