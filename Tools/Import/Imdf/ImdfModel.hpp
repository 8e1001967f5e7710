#pragma once

/// Internal. What has been read of an archive so far; each step of the import adds to it.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"
#include "Import/Imdf/ImdfArchive.hpp"
#include "Import/Imdf/ImdfFile.hpp"
#include "Import/Imdf/ImdfNames.hpp"

namespace KorvaniTools {

struct ImdfLevel {
  std::string id;
  std::int64_t ordinal = 0;
  bool outdoor = false;
  std::vector<std::string> buildings;  ///< ids
  std::optional<ImdfLabel> name;
  Polygons outline;  ///< may be empty
};

struct ImdfUnit {
  std::string id;
  std::string category;
  std::size_t level = 0;  ///< index into `ImdfModel::levels`
  std::size_t cell = 0;   ///< index into `FloorPlan::cells`
};

struct ImdfOpening {
  std::string id;
  std::size_t level = 0;  ///< index into `ImdfModel::levels`
  std::size_t door = 0;   ///< index into `FloorPlan::doors`
};

/// Features by their id; of several with one id, the first.
using ImdfIds = std::map<std::string, std::size_t>;

struct ImdfModel {
  ImdfModel(ImdfArchive& files, ImdfLanguages choice)
      : archive(files), languages(std::move(choice)) {}

  ImdfArchive& archive;
  ImdfLanguages languages;
  Remarks remarks;
  FloorPlan plan;

  std::vector<ImdfLevel> levels;
  ImdfIds levelIds;
  std::vector<ImdfUnit> units;
  ImdfIds unitIds;
  std::vector<ImdfOpening> openings;
  ImdfIds openingIds;

  std::int64_t ordinalOf(const ImdfUnit& unit) const { return levels[unit.level].ordinal; }

  /// The plan's level for one of the archive's.
  PlanLevelSet ordinalsOf(std::size_t level) const {
    return {static_cast<double>(levels[level].ordinal)};
  }

  /// The level that the feature is on; absent, with a remark, when the archive has none of that
  /// id. @throws BuildingError when the feature names no level
  std::optional<std::size_t> levelOf(const ImdfFeature& feature) const;
};

/// Whether the feature says that wheelchairs can be used there.
bool isForWheelchairs(const ImdfFeature& feature);

/// The point halfway between the ends of a line.
Coordinate middleOf(const Positions& line);

/// Puts `index` down under the feature's id. False, with a remark, when the id is taken.
bool enroll(ImdfIds& ids, const ImdfFeature& feature, std::size_t index);

}  // namespace KorvaniTools
