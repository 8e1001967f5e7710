#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace KorvaniCommon {

/// A dictionary that iterates in the order in which its keys were first set.
///
/// The same sequence of calls gives the same order on every platform, which is what makes
/// results that depend on an iteration (ties between nodes, the order of regions)
/// reproducible.
///
///     OrderedDictionary<std::int64_t, std::string> names;
///     names.set(7, "lift");
///     names.set(3, "stairs");
///     names.set(7, "elevator");                     // keeps its place
///     for (const auto& [key, name] : names) ...     // 7 elevator, 3 stairs
///     if (const std::string* name = names.find(3)) ...
///
/// Cost: lookup and insertion are O(1) on average, removal is linear because the order of
/// the rest is kept. Up to `kLinearLimit` entries there is no hash index at all: short
/// dictionaries, such as the edges that leave one node, are faster and smaller without one.
///
/// `Key` needs `operator==` and `std::hash`; it is copied into the index. Iterators and
/// pointers to values are valid until the next insertion, removal, assignment or `clear`.
/// Iteration is read-only: values change through `set`, `findMutable` and `row` only.
///
/// Thread safety: like a standard container; any number of readers, or one writer.
template <class Key, class V>
class OrderedDictionary {
 public:
  using value_type = std::pair<const Key, V>;
  using const_iterator = typename std::vector<value_type>::const_iterator;
  using iterator = const_iterator;

  /// Largest number of entries that are searched one by one. About where a scan of
  /// neighbouring integers stops beating a hash lookup.
  static constexpr std::size_t kLinearLimit = 8;

  OrderedDictionary() = default;
  OrderedDictionary(const OrderedDictionary&) = default;

  /// Leaves `other` empty.
  OrderedDictionary(OrderedDictionary&& other) noexcept
      : entries_(std::move(other.entries_)), index_(std::move(other.index_)) {
    other.clear();
  }

  /// Takes over the entries, which copies or moves them as the argument was passed. Entries
  /// have constant keys and cannot be assigned one by one.
  OrderedDictionary& operator=(OrderedDictionary other) noexcept {
    entries_.swap(other.entries_);
    index_.swap(other.index_);
    return *this;
  }

  ~OrderedDictionary() = default;

  /// Puts `value` under `key`: in the place of the present value when there is one, else at
  /// the end.
  void set(const Key& key, V value) {
    using std::swap;
    if (V* present = findMutable(key)) {
      swap(*present, value);  // the old value dies with the parameter, once all is in order
    } else {
      append(key, std::move(value));
    }
  }

  /// The value under `key`, or null when there is none.
  const V* find(const Key& key) const {
    const std::size_t position = positionOf(key);
    return position < entries_.size() ? &entries_[position].second : nullptr;
  }

  /// As `find`, for changing the value in place.
  V* findMutable(const Key& key) {
    const std::size_t position = positionOf(key);
    return position < entries_.size() ? &entries_[position].second : nullptr;
  }

  /// The value under `key`; a missing one is made (`V()`) and put at the end first.
  V& row(const Key& key) {
    const std::size_t position = positionOf(key);
    return position < entries_.size() ? entries_[position].second : append(key, V());
  }

  /// The same as `row`, so that nested dictionaries read well: `edges[from].set(to, edge)`.
  V& operator[](const Key& key) { return row(key); }

  /// Whether there is a value under `key`.
  bool contains(const Key& key) const { return find(key) != nullptr; }

  /// Removes the entry of `key`; the others keep their order. Returns whether there was one.
  bool remove(const Key& key) {
    const std::size_t position = positionOf(key);
    if (position == entries_.size()) return false;
    index_.erase(key);  // first, since `key` may be the entry's own, which is about to go
    for (auto& indexed : index_) {
      if (indexed.second > position) --indexed.second;
    }
    relocate(entries_.size() - 1, position);
    return true;
  }

  /// Removes everything.
  void clear() noexcept {
    index_.clear();
    std::vector<value_type>().swap(entries_);
  }

  /// Makes room for `count` entries, so that so many can be set without moving any.
  void reserve(std::size_t count) {
    if (count > entries_.capacity()) relocate(count, entries_.size());
    if (count > kLinearLimit) index_.reserve(count);
  }

  /// Number of entries.
  std::size_t size() const noexcept { return entries_.size(); }

  /// Whether there is no entry.
  bool empty() const noexcept { return entries_.empty(); }

  /// The keys in order.
  std::vector<Key> keys() const {
    std::vector<Key> result;
    result.reserve(entries_.size());
    for (const value_type& entry : entries_) result.push_back(entry.first);
    return result;
  }

  /// The first entry, a `std::pair` of key and value.
  const_iterator begin() const noexcept { return entries_.begin(); }

  /// Past the last entry.
  const_iterator end() const noexcept { return entries_.end(); }

 private:
  /// The place of `key` among the entries, or the number of entries when it has none.
  std::size_t positionOf(const Key& key) const {
    if (!index_.empty()) {
      const auto found = index_.find(key);
      return found == index_.end() ? entries_.size() : found->second;
    }
    std::size_t position = 0;
    while (position < entries_.size() && !(entries_[position].first == key)) ++position;
    return position;
  }

  /// Adds an entry for a key that has none.
  V& append(const Key& key, V value) {
    if (entries_.size() == entries_.capacity()) {
      relocate(std::max<std::size_t>(4, 2 * entries_.size()), entries_.size());
    }
    entries_.emplace_back(key, std::move(value));
    indexLast();
    return entries_.back().second;
  }

  /// Brings the index up to date with the entry just appended. The index is either empty or
  /// complete; it comes into being with the first entry beyond the limit.
  void indexLast() {
    if (entries_.size() <= kLinearLimit && index_.empty()) return;
    const std::size_t first = index_.empty() ? 0 : entries_.size() - 1;
    for (std::size_t position = first; position < entries_.size(); ++position) {
      index_.emplace(entries_[position].first, position);
    }
  }

  /// Moves the entries, without the one at `omitted` if that is a place, to storage of
  /// `capacity`. The vector's own growth would copy values whose keys may throw on copying,
  /// and its `erase` would assign to constant keys.
  void relocate(std::size_t capacity, std::size_t omitted) {
    std::vector<value_type> moved;
    moved.reserve(capacity);
    for (std::size_t position = 0; position < entries_.size(); ++position) {
      if (position != omitted) moved.push_back(std::move(entries_[position]));
    }
    entries_.swap(moved);
  }

  std::vector<value_type> entries_;
  std::unordered_map<Key, std::size_t> index_;
};

}  // namespace KorvaniCommon
