#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace KorvaniCommon {

/// A list that several threads share.
///
///     SynchronizedArray<std::shared_ptr<Task>> pending;
///     pending.append(task);
///     pending.perform([&] {                        // nobody gets between search and removal
///       if (auto index = pending.indexOf(task)) pending.removeAt(*index);
///     });
///
/// Guarantees:
/// - Thread safety: each operation is atomic with respect to every other; `perform` makes one
///   operation of several.
/// - Elements that are removed are destroyed when no lock of the array is held any more, also
///   those removed inside `perform`. A destructor may therefore use the array, or take its
///   time, without holding anybody up.
///
/// `Equal` decides what `indexOf` and `appendUnlessContained` take for the same element; by
/// default `operator==`. The array owns its elements, and is itself neither copied nor moved.
template <class T, class Equal = std::equal_to<T>>
class SynchronizedArray {
 public:
  SynchronizedArray() = default;
  SynchronizedArray(const SynchronizedArray&) = delete;
  SynchronizedArray& operator=(const SynchronizedArray&) = delete;

  /// Adds `element` at the end.
  void append(T element) {
    perform([&] { elements_.push_back(std::move(element)); });
  }

  /// Adds `element` at the end if no equal one is listed. Returns whether it was added.
  bool appendUnlessContained(T element) {
    return perform([&] {
      if (indexOf(element)) return false;
      elements_.push_back(std::move(element));
      return true;
    });
  }

  /// Empties the list.
  void removeAll() {
    perform([&] {
      for (T& element : elements_) removed_.push_back(std::move(element));
      elements_.clear();
    });
  }

  /// Removes the element at `index`; later ones move up. Does nothing when there is no such
  /// element. Returns whether there was one. An index that another operation returned is
  /// worth something inside the same `perform` only.
  bool removeAt(std::size_t index) {
    return perform([&] {
      if (index >= elements_.size()) return false;
      removed_.push_back(std::move(elements_[index]));
      elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(index));
      return true;
    });
  }

  /// Place of the first element equal to `value`; absent when there is none. Linear.
  std::optional<std::size_t> indexOf(const T& value) const {
    std::lock_guard lock(mutex_);
    const auto found = std::find_if(elements_.begin(), elements_.end(),
                                    [&](const T& element) { return Equal()(element, value); });
    if (found == elements_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - elements_.begin());
  }

  /// Number of elements at this moment.
  std::size_t count() const {
    std::lock_guard lock(mutex_);
    return elements_.size();
  }

  /// A copy of the list as it is now, to iterate without holding anybody up.
  std::vector<T> snapshot() const {
    std::lock_guard lock(mutex_);
    return elements_;
  }

  /// Runs `step()` while no other thread can use the array, and returns a copy of its result.
  /// The step may use the array, also `perform`; it must not wait for a thread that does.
  template <class F>
  auto perform(F&& step) {
    Turn turn(*this);
    return std::forward<F>(step)();
  }

 private:
  /// Holds the array for one thread. The outermost turn takes the removed elements along and
  /// destroys them once it has let go of the lock.
  class Turn {
   public:
    explicit Turn(SynchronizedArray& array) : array_(array) {
      array_.mutex_.lock();
      ++array_.depth_;
    }

    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    ~Turn() {
      std::vector<T> removed;
      if (--array_.depth_ == 0) removed.swap(array_.removed_);
      array_.mutex_.unlock();
    }

   private:
    SynchronizedArray& array_;
  };

  mutable std::recursive_mutex mutex_;
  std::vector<T> elements_;
  std::vector<T> removed_;  // to be destroyed by the outermost turn
  int depth_ = 0;           // of turns within turns of the thread that holds the mutex
};

}  // namespace KorvaniCommon
