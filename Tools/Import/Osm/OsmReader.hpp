#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "Building/Rectangle.hpp"
#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// Reads OpenStreetMap files: NAME.osm, NAME.osm.gz, NAME.osm.bz2 and NAME.osm.pbf.
///
///     const FloorPlan plan = readOsm("station.osm.pbf", {});
///     for (const std::string& remark : plan.remarks.sentences()) std::cerr << remark << '\n';
///
/// What is indoors is read: everything with `indoor` or, if it is something to walk on, to go to
/// or a wall, with a `level`; lifts; and what belongs to these, such as doors on outlines and
/// entrances. Ways outdoors, which have neither, are kept as far as their corners are within
/// 100 m of something indoors, so that an extract of a city becomes a building with its
/// surroundings, not a graph of the city.
///
/// The file is read in several passes, and only what is relevant is held in memory: about 100
/// bytes for each corner of what is indoors, and of all nodes within 100 m of it. Cost: five or
/// six passes over the file.

struct OsmOptions {
  /// Keeps only features whose own rectangle touches this one.
  std::optional<Rectangle> box;
  /// The building's name; absent: that of the named building around most of what is indoors.
  std::optional<std::string> name;
  /// Shows on standard error how far reading has come. For terminals.
  bool progress = false;
};

/// The floor plan that the file at `file` draws. Features are in the file's order, ways outdoors
/// behind the others.
/// @throws InputError when the file cannot be read, is malformed or holds nothing indoors; it names
///     the file, the position as far as it is known, what was found and what was expected
FloorPlan readOsm(const std::filesystem::path& file, const OsmOptions& options);

}  // namespace KorvaniTools
