#pragma once

// Internal.

/// Working memory for searches, lent to one search at a time and used again by the next.
///
/// A search needs arrays as long as the graph. To make and clear them each time would cost more
/// than many a search; kept here, a search pays for what it touches only. The pool belongs to the
/// searcher and goes with it. Memory of each thread's own would outlive the graph, in every thread
/// of the host that ever searched.
///
///   const auto scratch = pool_.take([&] { return std::make_unique<Labels>(n); });
///   scratch->...
///
/// The pool keeps as many as were in use at once. It must outlive what it lends. Thread-safe.

#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace KorvaniNavigation {

template <typename Scratch>
class ScratchPool {
  struct GiveBack {
    ScratchPool* pool;
    void operator()(Scratch* scratch) const { pool->giveBack(std::unique_ptr<Scratch>(scratch)); }
  };

 public:
  using Lent = std::unique_ptr<Scratch, GiveBack>;

  /// One that nobody uses, else the one that `make` returns as a std::unique_ptr.
  template <typename Make>
  Lent take(const Make& make) {
    std::unique_ptr<Scratch> scratch = takeUnused();
    if (!scratch) scratch = make();
    return Lent(scratch.release(), GiveBack{this});
  }

 private:
  std::unique_ptr<Scratch> takeUnused() {
    const std::lock_guard lock(mutex_);
    if (unused_.empty()) return nullptr;
    std::unique_ptr<Scratch> scratch = std::move(unused_.back());
    unused_.pop_back();
    return scratch;
  }

  void giveBack(std::unique_ptr<Scratch> scratch) {
    const std::lock_guard lock(mutex_);
    unused_.push_back(std::move(scratch));
  }

  std::mutex mutex_;
  std::vector<std::unique_ptr<Scratch>> unused_;
};

}  // namespace KorvaniNavigation
