#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Platform/Value.hpp"

namespace KorvaniTools {

/// What a host asked of the engine, one value for each line of a trace file.
///
/// `TraceReader` (TraceReader.hpp) makes them of a file's lines, `traceLine` (TraceWriter.hpp)
/// writes them. All are values: copy, move and read them from any thread.

/// A position, in degrees and whole levels. Neither range is checked.
struct TracePoint {
  double latitude = 0;
  double longitude = 0;
  std::int64_t level = 0;
};

/// Changes values of a configuration, each a boolean or a number.
struct ConfigOperation {
  using Settings = std::vector<std::pair<std::string, KorvaniPlatform::Number>>;

  std::optional<std::string> config;  ///< absent: the main one; a new name makes a configuration
  Settings set;                       ///< items, by their keys
  Settings fields;                    ///< values without an item, by their fields' names
};

/// Maps a position onto the graph.
struct IntersectOperation {
  TracePoint at;
  bool onOriginalGraph = true;
};

/// Starts guiding, in place of whoever was guided before.
struct RouteOperation {
  TracePoint from;
  std::vector<TracePoint> to;
  std::optional<std::string> config;  ///< absent: the main one
  std::optional<bool> barrierFree;    ///< absent: as the configuration says
  bool directions = true;
};

/// The position of the person who is guided.
struct PositionOperation {
  TracePoint at;
};

/// Other destinations for the person who is guided.
struct DestinationsOperation {
  std::vector<TracePoint> to;
};

/// Snaps a position to the graph.
struct SnapOperation {
  TracePoint at;
  std::optional<std::string> config;  ///< absent: the main one
};

/// How an obstacle check decides.
enum class TraceDenier {
  strength,  ///< by the strength of the walls, as the facade's own checks
  byCredit,  ///< by the credit of unobstructed positions; "default" in a file
};

/// Checks that a position was not reached through a wall.
struct CheckOperation {
  TracePoint at;
  std::optional<std::string> config;  ///< absent: the main one
  TraceDenier denier = TraceDenier::strength;
};

/// Drops all tasks, and provides and announces the graph anew.
struct CancelOperation {};

using TraceOperation =
    std::variant<ConfigOperation, IntersectOperation, RouteOperation, PositionOperation,
                 DestinationsOperation, SnapOperation, CheckOperation, CancelOperation>;

}  // namespace KorvaniTools
