#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "Common/OrderedDictionary.hpp"
#include "Common/Revision.hpp"

namespace KorvaniCommon {

/// An ordered dictionary that tells its owner of every change.
///
/// What is computed from a graph is kept until the graph changes, so no change may go unnoticed,
/// and reading must not count as one. Hence values are handed out read-only, and are changed by
/// `set`; only a value that is such a dictionary itself is handed out for changing, and tells the
/// same owner.
///
///     auto revision = std::make_shared<Revision>();
///     CountedDictionary<std::int64_t, CountedDictionary<std::int64_t, Edge>> edges;
///     edges.reportTo(revision);
///     auto& row = edges[1];      // a change: the row is made
///     row.set(2, edge);          // another one
///     edges.find(1)->find(2);    // none
///
/// Copies report to nobody. What is moved out of it goes on reporting to the same owner, as does
/// what is left behind; what is assigned into it reports to the owner that it had. All else is as
/// in OrderedDictionary, which describes order, cost, validity of pointers and thread safety.
template <class Key, class V>
class CountedDictionary {
  using Entries = OrderedDictionary<Key, V>;
  static constexpr bool kNested = requires(V & value) { value.reportTo(RevisionListener()); };

 public:
  using value_type = typename Entries::value_type;
  using const_iterator = typename Entries::const_iterator;
  using iterator = const_iterator;

  CountedDictionary() = default;
  CountedDictionary(const CountedDictionary& other) : entries_(other.entries_) {}
  // NOLINTNEXTLINE(performance-noexcept-move-constructor): telling of a change may not be sworn off
  CountedDictionary(CountedDictionary&& other)
      : entries_(std::move(other.entries_)),
        listener_(other.listener_) {  // NOLINT(performance-move-constructor-init): shared by both
    tellChanged(listener_);
  }
  ~CountedDictionary() = default;

  CountedDictionary& operator=(CountedDictionary other) {
    entries_ = std::move(other.entries_);
    reportTo(listener_);
    tellChanged(listener_);
    return *this;
  }

  /// From now on `listener` is told of every change of this dictionary and its rows. Not a change
  /// itself. Linear in the number of rows.
  void reportTo(RevisionListener listener) {
    listener_ = std::move(listener);
    if constexpr (kNested) {
      for (const value_type& entry : entries_)
        entries_.findMutable(entry.first)->reportTo(listener_);
    }
  }

  void set(const Key& key, V value) {
    if constexpr (kNested) value.reportTo(listener_);
    entries_.set(key, std::move(value));
    tellChanged(listener_);
  }

  /// The row under `key`; a missing one is made and put at the end first.
  V& row(const Key& key) requires kNested {
    if (V* present = entries_.findMutable(key)) return *present;
    V& made = entries_.row(key);
    made.reportTo(listener_);
    tellChanged(listener_);
    return made;
  }
  V& operator[](const Key& key) requires kNested { return row(key); }

  /// As `find`, for changing the row.
  V* findMutable(const Key& key) requires kNested { return entries_.findMutable(key); }

  /// The place of a value: `dictionary[key] = value` is `dictionary.set(key, value)`.
  class Place {
   public:
    Place(CountedDictionary& dictionary, const Key& key) : dictionary_(dictionary), key_(key) {}

    // NOLINTNEXTLINE(misc-unconventional-assign-operator): nobody chains these
    void operator=(V value) const { dictionary_.set(key_, std::move(value)); }

   private:
    CountedDictionary& dictionary_;
    const Key& key_;
  };
  Place operator[](const Key& key) requires(!kNested) { return Place(*this, key); }

  bool remove(const Key& key) {
    const bool removed = entries_.remove(key);
    if (removed) tellChanged(listener_);
    return removed;
  }

  void clear() noexcept {
    entries_.clear();
    tellChanged(listener_);
  }

  void reserve(std::size_t count) { entries_.reserve(count); }

  const V* find(const Key& key) const { return entries_.find(key); }
  bool contains(const Key& key) const { return entries_.contains(key); }
  std::vector<Key> keys() const { return entries_.keys(); }
  std::size_t size() const noexcept { return entries_.size(); }
  bool empty() const noexcept { return entries_.empty(); }
  const_iterator begin() const noexcept { return entries_.begin(); }
  const_iterator end() const noexcept { return entries_.end(); }

 private:
  Entries entries_;
  RevisionListener listener_;
};

}  // namespace KorvaniCommon
