#pragma once

#include <atomic>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

#include "Common/Derived.hpp"
#include "Common/Revision.hpp"

namespace KorvaniCommon {

/// A list that tells its owner of every change, and whose copies share their elements until one of
/// them changes.
///
///     CountedArray<std::shared_ptr<KRVNavObstacle>> obstacles;
///     obstacles.push_back(wall);            // a change
///     const auto before = obstacles;        // none, and no element is copied
///     obstacles.push_back(door);            // leaves `before` as it was
///     for (const auto& obstacle : obstacles) ...
///
/// Elements are read-only; `set` puts another one in a place. Copies, and what is moved out of it,
/// report to nobody; what is assigned into it reports to the owner that it had. References to
/// elements are valid until the next change.
///
/// Cost: copying is constant. The first change of a list that has been copied, or whose copy it is,
/// copies the elements.
///
/// Thread safety: any number of readers, copying included, or one writer. Copies are independent of
/// each other in this respect.
template <class T>
class CountedArray {
 public:
  using Elements = std::vector<T>;
  using value_type = T;
  using const_iterator = typename Elements::const_iterator;
  using iterator = const_iterator;

  CountedArray() : contents_(none()), isShared_(true) {}
  // NOLINTNEXTLINE(google-explicit-constructor): a list in the place of such a list reads well
  CountedArray(Elements elements)
      : contents_(std::make_shared<Contents>(std::move(elements))), isShared_(false) {}
  CountedArray(std::initializer_list<T> elements) : CountedArray(Elements(elements)) {}
  CountedArray(const CountedArray& other) : contents_(other.shared()), isShared_(true) {}
  // NOLINTNEXTLINE(performance-noexcept-move-constructor): what is left behind is a list as well
  CountedArray(CountedArray&& other) : CountedArray() { swapWith(other); }
  ~CountedArray() = default;

  CountedArray& operator=(CountedArray other) {
    swapWith(other);
    return *this;
  }

  /// From now on `listener` is told of every change. Not a change itself.
  void reportTo(RevisionListener listener) { listener_ = std::move(listener); }

  void push_back(T element) {
    own().push_back(std::move(element));
    tellChanged(listener_);
  }

  /// Puts `element` in the place at `index`, which exists.
  void set(std::size_t index, T element) {
    own()[index] = std::move(element);
    tellChanged(listener_);
  }

  template <class... Arguments>
  void emplace_back(Arguments&&... arguments) {
    push_back(T(std::forward<Arguments>(arguments)...));
  }

  /// Puts `element` before the one at `place`, and gives its place.
  const_iterator insert(const_iterator place, T element) {
    const auto index = place - begin();
    Elements& elements = own();
    elements.insert(elements.begin() + index, std::move(element));
    tellChanged(listener_);
    return begin() + index;
  }

  /// Removes an element, or those from `first` up to `last`; the others keep their order. Gives the
  /// place of what followed.
  const_iterator erase(const_iterator place) { return erase(place, place + 1); }
  const_iterator erase(const_iterator first, const_iterator last) {
    const auto index = first - begin();
    const auto count = last - first;
    Elements& elements = own();
    elements.erase(elements.begin() + index, elements.begin() + index + count);
    tellChanged(listener_);
    return begin() + index;
  }

  /// Removes the last element; there is one.
  void pop_back() { erase(end() - 1); }

  void resize(std::size_t count) {
    own().resize(count);
    tellChanged(listener_);
  }

  template <class Iterator>
  void assign(Iterator first, Iterator last) {
    *this = CountedArray(Elements(first, last));
  }

  void clear() { *this = CountedArray(); }

  void reserve(std::size_t count) { own().reserve(count); }

  /// The elements, for readers that know the plain list only.
  const Elements& elements() const { return contents_->elements; }
  // NOLINTNEXTLINE(google-explicit-constructor): it is a list, and reads as one
  operator const Elements&() const { return elements(); }

  /// What is computed from the elements; shared by all copies that share the elements. A change of
  /// the list drops it.
  const Derived& derived() const { return contents_->derived; }

  /// Whether both hold the very same elements, so that what is computed from one is right for the
  /// other. Constant; false does not say that the elements differ.
  bool sharesWith(const CountedArray& other) const { return contents_ == other.contents_; }

  const T& operator[](std::size_t index) const { return elements()[index]; }
  const T& at(std::size_t index) const { return elements().at(index); }
  const T& front() const { return elements().front(); }
  const T& back() const { return elements().back(); }
  std::size_t size() const noexcept { return contents_->elements.size(); }
  bool empty() const noexcept { return contents_->elements.empty(); }
  const_iterator begin() const noexcept { return contents_->elements.begin(); }
  const_iterator end() const noexcept { return contents_->elements.end(); }
  auto rbegin() const noexcept { return contents_->elements.rbegin(); }
  auto rend() const noexcept { return contents_->elements.rend(); }
  const T* data() const noexcept { return contents_->elements.data(); }

  friend bool operator==(const CountedArray& a, const CountedArray& b) {
    return a.sharesWith(b) || a.elements() == b.elements();
  }

 private:
  struct Contents {
    explicit Contents(Elements initial) : elements(std::move(initial)) {}

    Elements elements;
    Derived derived;
  };

  /// What all empty lists share, so that they cost nothing. Never destroyed.
  static const std::shared_ptr<Contents>& none() {
    static const auto* const contents =
        new std::shared_ptr<Contents>(std::make_shared<Contents>(Elements()));
    return *contents;
  }

  std::shared_ptr<Contents> shared() const {
    isShared_.store(true, std::memory_order_relaxed);
    return contents_;
  }

  void swapWith(CountedArray& other) {
    contents_.swap(other.contents_);
    const bool wasShared = isShared_.load(std::memory_order_relaxed);
    isShared_.store(other.isShared_.load(std::memory_order_relaxed), std::memory_order_relaxed);
    other.isShared_.store(wasShared, std::memory_order_relaxed);
    tellChanged(listener_);
    tellChanged(other.listener_);
  }

  /// The elements for a change: shared with nobody, and with nothing computed from them. Elements
  /// that were shared once are left for good: whether the others are done reading could not be told
  /// without making them wait.
  Elements& own() {
    if (isShared_.load(std::memory_order_relaxed)) {
      contents_ = std::make_shared<Contents>(contents_->elements);
      isShared_.store(false, std::memory_order_relaxed);
    } else if (!contents_->derived.isEmpty()) {
      contents_ = std::make_shared<Contents>(std::move(contents_->elements));
    }
    return contents_->elements;
  }

  std::shared_ptr<Contents> contents_;
  mutable std::atomic<bool> isShared_;
  RevisionListener listener_;
};

}  // namespace KorvaniCommon
