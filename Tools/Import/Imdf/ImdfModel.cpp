#include "Import/Imdf/ImdfModel.hpp"

#include <algorithm>

namespace KorvaniTools {

std::optional<std::size_t> ImdfModel::levelOf(const ImdfFeature& feature) const {
  const auto found = levelIds.find(feature.fields().requiredString("level_id"));
  if (found != levelIds.end()) return found->second;
  feature.note("no level has the level_id, left out");
  return {};
}

bool isForWheelchairs(const ImdfFeature& feature) {
  const std::vector<std::string> who = feature.texts("accessibility");
  return std::find(who.begin(), who.end(), "wheelchair") != who.end();
}

Coordinate middleOf(const Positions& line) {
  return {(line.front().latitude + line.back().latitude) / 2,
          (line.front().longitude + line.back().longitude) / 2};
}

bool enroll(ImdfIds& ids, const ImdfFeature& feature, std::size_t index) {
  if (ids.emplace(feature.id(), index).second) return true;
  feature.note("the id is that of an earlier feature, left out");
  return false;
}

}  // namespace KorvaniTools
