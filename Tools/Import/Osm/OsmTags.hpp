#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <string_view>

namespace KorvaniTools {

/// The tags of an OpenStreetMap feature.
class OsmTags {
 public:
  OsmTags() = default;
  OsmTags(std::initializer_list<std::pair<const std::string, std::string>> tags) : tags_(tags) {}

  /// Sets the value of `key`; of a key that a file gives twice, the first value counts.
  void add(std::string_view key, std::string_view value);

  /// The value; empty when there is no such tag. Valid as long as the tags are.
  std::string_view operator[](std::string_view key) const;

  bool has(std::string_view key) const { return !(*this)[key].empty(); }

  /// Whether the value is one of these.
  bool is(std::string_view key, std::initializer_list<std::string_view> values) const;

  /// Whether there is a value and it is not "no".
  bool affirms(std::string_view key) const { return has(key) && (*this)[key] != "no"; }

  /// Adds the tags of `other` whose keys this has not.
  void addMissing(const OsmTags& other) { tags_.insert(other.tags_.begin(), other.tags_.end()); }

  bool empty() const { return tags_.empty(); }

 private:
  std::map<std::string, std::string, std::less<>> tags_;
};

}  // namespace KorvaniTools
