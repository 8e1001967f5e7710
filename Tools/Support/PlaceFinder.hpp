#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Building/Building.hpp"
#include "Support/LevelNames.hpp"

namespace KorvaniTools {

/// A point in a building that somebody asked for.
struct Spot {
  std::string name;  ///< the place's name, or latitude and longitude
  Coordinate coordinate;
  std::int64_t level = 0;
};

/// Finds the points that people name on a command line.
///
///     const PlaceFinder finder(building, LevelNames(building));
///     finder.find("Lobby");                  // the place of that name
///     finder.find("Hall 1@2");               // the one on level 2
///     finder.find("53.5619,9.9865,0");       // latitude, longitude, level
///
/// A name is looked for as it is written, then without regard to capitals. What cannot be
/// found, or could be several places, is an `InputError` that says what to write instead. The
/// building must outlive the finder.
class PlaceFinder {
 public:
  PlaceFinder(const Building& building, LevelNames levels);

  /// The point that `text` means: coordinates, a place's name, or NAME@LEVEL where LEVEL is
  /// the level's number or name.
  ///
  /// Coordinates are finite, with a latitude from -90 to 90, a longitude from -180 to 180 and
  /// a whole level from -1000 to 1000.
  /// @throws InputError
  Spot find(std::string_view text) const;

  /// The names that come closest to `name`, all equally close, each once, at most `count`.
  std::vector<std::string> closestNames(std::string_view name, std::size_t count) const;

 private:
  using Matches = std::vector<const Place*>;

  Matches named(std::string_view name) const;
  Matches namedOnLevel(std::string_view text) const;
  [[noreturn]] void refuseUnknown(std::string_view text) const;
  [[noreturn]] void refuseAmbiguous(std::string_view text, const Matches& matches) const;

  const Building& building_;
  LevelNames levels_;
};

}  // namespace KorvaniTools
