#pragma once

#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>

namespace KorvaniCommon {

/// A value and the mutex that guards it.
///
/// For state that several threads read and replace as a whole: a reference to the current
/// graph, a small record of inputs. Readers take a copy and work on that without a lock, so
/// the lock is held only for as long as copying takes.
///
///     Guarded<std::shared_ptr<Graph>> graph;
///     graph.store(newGraph);
///     if (auto current = graph.load()) search(*current);
///     graph.update([&](auto& held) { if (held == old) held = nullptr; });
///
/// Guarantees:
/// - Thread safety: every operation is atomic with respect to every other one. A load, an edit
///   of the copy and a store are three operations; edits that depend on the present value
///   belong in `update`.
/// - What an operation replaces is destroyed after the lock has been released. A destructor
///   that asks the same object again therefore does not deadlock.
///
/// Functions given to `update` and `read` run under the lock: they must be short and must not
/// use the same object. The object owns its value, and is itself neither copied nor moved.
template <class T>
class Guarded {
  static_assert(std::is_copy_constructible_v<T>, "readers take copies");

 public:
  /// Holds a value-initialised `T`.
  Guarded() = default;

  /// Holds `value`.
  explicit Guarded(T value) : value_(std::move(value)) {}

  Guarded(const Guarded&) = delete;
  Guarded& operator=(const Guarded&) = delete;

  /// A copy of the present value.
  T load() const {
    std::lock_guard lock(mutex_);
    return value_;
  }

  /// Replaces the value.
  void store(T value) {
    using std::swap;
    std::lock_guard lock(mutex_);
    swap(value_, value);  // `value` is a parameter and outlives the lock
  }

  /// Calls `edit(T&)` on the held value under the lock and returns a copy of its result.
  /// Costs one copy of the value beyond the edit, which keeps what the edit drops alive until
  /// the lock is released.
  template <class F>
  auto update(F&& edit) {
    std::optional<T> replaced;  // declared before the lock, hence destroyed after it
    std::lock_guard lock(mutex_);
    replaced.emplace(value_);
    return std::forward<F>(edit)(value_);
  }

  /// Calls `look(const T&)` under the lock and returns a copy of its result. For a part of a
  /// value that is dear to copy whole. References and pointers into the value must not leave
  /// `look`.
  template <class F>
  auto read(F&& look) const {
    std::lock_guard lock(mutex_);
    return std::forward<F>(look)(value_);
  }

 private:
  mutable std::mutex mutex_;
  T value_{};
};

}  // namespace KorvaniCommon
