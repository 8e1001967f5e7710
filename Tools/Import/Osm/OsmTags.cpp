#include "Import/Osm/OsmTags.hpp"

#include <algorithm>

#include "Support/Text.hpp"

namespace KorvaniTools {

void OsmTags::add(std::string_view key, std::string_view value) {
  tags_.emplace(std::string(key), std::string(trimmed(value)));
}

std::string_view OsmTags::operator[](std::string_view key) const {
  const auto tag = tags_.find(key);
  return tag == tags_.end() ? std::string_view() : tag->second;
}

bool OsmTags::is(std::string_view key, std::initializer_list<std::string_view> values) const {
  const std::string_view value = (*this)[key];
  return !value.empty() && std::find(values.begin(), values.end(), value) != values.end();
}

}  // namespace KorvaniTools
