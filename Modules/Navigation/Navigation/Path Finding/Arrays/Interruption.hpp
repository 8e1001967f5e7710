#pragma once

// Internal.

/// How somebody who prepares something for a search reads the flag by which others interrupt it.
///
/// What has stopped half-way must not be taken for finished when the flag is taken back meanwhile.
/// So an interruption that was seen once stays: every part of the preparation stops at it, and who
/// asked for the whole drops it.
///
///   Interruption interruption(flag);
///   for (...) {
///     if (interruption.now()) return;
///     ...
///   }
///   if (interruption.seen()) drop();
///
/// Belongs to one thread, the flag to all.

#include <atomic>

namespace KorvaniNavigation {

/// For who cannot be interrupted.
inline const std::atomic<bool> kNeverInterrupted{false};

class Interruption {
 public:
  /// The flag must outlive the object.
  explicit Interruption(const std::atomic<bool>& flag) : flag_(flag) {}

  /// Whether to stop; looks at the flag.
  bool now() {
    seen_ = seen_ || flag_.load(std::memory_order_relaxed);
    return seen_;
  }

  /// Whether now() has ever said so.
  bool seen() const { return seen_; }

 private:
  const std::atomic<bool>& flag_;
  bool seen_ = false;
};

}  // namespace KorvaniNavigation
