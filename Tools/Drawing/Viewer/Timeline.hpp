#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "Building/Building.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/RouteText.hpp"

namespace KorvaniTools {

/// A recorded walk as it can be shown: what came in, what the engine made of it, and what the
/// person was told, moment by moment.
///
///     const Timeline timeline = makeTimeline(building, "walk.trace.ndjson");
///     for (const Moment& moment : timeline.moments) show(moment);
///
/// All are values: copy, move and read them from any thread. Coordinates are finite.

/// A place on a level.
struct TimelinePoint {
  Coordinate coordinate;
  std::int64_t level = 0;

  bool operator==(const TimelinePoint&) const = default;
};

/// A route as it was found, before anything of it was walked.
struct TimelineRoute {
  KorvaniNavigation::Route found;  ///< as the engine gave it, with instructions
  std::vector<TimelinePoint> points;
  std::vector<Instruction> instructions;
  Spot start;           ///< where the guidance began; the place that is there, or "the start"
  Spot end;             ///< the place it leads to, or "the destination"
  double distance = 0;  ///< metres
  bool direct = false;  ///< a straight line, for want of a way
};

/// How things stand after a line of the trace. What the line does not touch is as it was before,
/// but for `denied`, `rerouted`, `arrived` and `error`, which tell of the line alone.
struct Moment {
  std::size_t line = 0;              ///< of the trace, from 1
  std::string operation;             ///< "position", "snap", ... as in the trace
  std::int64_t second = 0;           ///< since the beginning, one for each position; never falls
  std::optional<TimelinePoint> raw;  ///< the position that came in last
  std::optional<TimelinePoint> snapped;    ///< where snapping put it on the map
  std::optional<TimelinePoint> checked;    ///< where the obstacle check let it be
  bool denied = false;                     ///< the check's answer is not the position that came in
  std::optional<std::size_t> route;        ///< index into `Timeline::routes`; absent: not guided
  std::vector<TimelinePoint> ahead;        ///< what is left of the route, from here on
  std::string told;                        ///< the instruction that applies now; empty without one
  std::optional<std::size_t> instruction;  ///< the route's instruction that this is
  double remaining = 0;                    ///< metres of `ahead`
  bool rerouted = false;                   ///< another way took the place of the one before
  bool arrived = false;
  std::string error;  ///< why the line could not be carried out; empty when it was
};

struct Timeline {
  LevelNames levels;  ///< what instructions call the levels
  std::vector<TimelineRoute> routes;
  std::vector<Moment> moments;  ///< one for each line that says something
};

/// Replays the trace in the building and notes every moment. It takes the engine's facade for
/// itself while it works, like every replay (see Trace/Replay.hpp), on the main thread.
///
/// Time is not in a trace; a position is taken to come in every second. Lines that do something
/// else with the same position (snap it, check it) share its second.
/// @param file the name that errors give the trace
/// @throws TraceError when a line is malformed
/// @throws InputError when the trace cannot be read
Timeline makeTimeline(const Building& building, std::istream& trace, const std::string& file);

/// The same for the file at `path`.
Timeline makeTimeline(const Building& building, const std::filesystem::path& path);

}  // namespace KorvaniTools
