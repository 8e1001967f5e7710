#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// How an archive is read.
struct ImdfOptions {
  /// Language of names, a tag like "en" or "de-CH". Where a name lacks it, the manifest's language
  /// is taken, and else the first one.
  std::string language = "en";
  std::optional<std::string> attribution;  ///< archives name none
  std::optional<std::string> licence;      ///< archives name none
  /// How many bytes an archive's files may have altogether once they are unfolded.
  std::uint64_t maxUnfoldedBytes = 512ULL * 1024 * 1024;
};

/// Reads an IMDF 1.0 archive, a folder or a zip file of GeoJSON files, as a floor plan.
///
///     ImdfOptions options;
///     options.attribution = "Terminal Ltd";
///     const FloorPlan plan = readImdf("terminal.zip", options);
///
/// - The plan's levels are the ordinals. Levels of several buildings that have the same ordinal
///   are one level of the plan.
/// - Units are cells with walls around, openings are their doors, fixtures and kiosks are walls.
///   Nobody walks through solid units, voids, units that are not public, and emergency exits.
/// - Stairs, escalators, ramps and elevators that lie above each other are one way up and down;
///   relationships join what does not, and say in which direction escalators run.
/// - Ways between buildings, of which the format knows nothing, are those of a `navPath.geojson`
///   where an archive has one.
/// - Units with a name, occupants and amenities are places. Openings that lead outdoors are
///   entrances.
///
/// The archive must hold `level.geojson` and `unit.geojson`; what else the format knows is read
/// when it is there, and other files are ignored. A broken feature is left out and a remark of the
/// plan names it, as long as most features of the file are sound; a broken level is an error,
/// since all that is on it would be lost. Properties that are missing, misspelt or of another type
/// cost what they would have said, and a remark counts them.
///
/// Nothing is written to disk. Cost: linear in the size of the files that are read, and
/// n log n in the units of a level.
///
/// @throws InputError when there is no archive, or none that can be read: encrypted or corrupt
///     zip files, entries that lead out of the archive, too many or too large ones, no level or
///     unit file
/// @throws BuildingError that names file and feature when a file's contents are wrong
FloorPlan readImdf(const std::filesystem::path& folderOrZip, const ImdfOptions& options);

}  // namespace KorvaniTools
