#pragma once

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "Building/Building.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Support/PlaceFinder.hpp"
#include "Trace/TraceOperation.hpp"

namespace KorvaniTools {

/// Somebody who walks where a route leads, seen through a positioning system.
struct WalkOptions {
  Spot from;
  Spot to;
  double noise = 0;  ///< metres, see PositionNoise; from 0 to 1000
  double speed = KorvaniNavigation::Route::kWalkingSpeed;  ///< metres per second; above 0
  std::uint64_t seed = 1;
  double levelGlitches = 0;  ///< the probability that a position's level is wrong; from 0 to 1
  bool detour = false;       ///< leave the route once
  bool barrierFree = false;  ///< true: without barriers; false: as the main configuration says
};

/// Nobody can walk as the options say, though nothing is wrong with them.
class NoWalkError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What an app would ask of the engine while somebody walks: the route, then once a second a snap
/// and a position of the same point, until the engine says that the destination is reached.
///
/// The person walks along the route that the engine gives for the true start; with a detour, along
/// a part of it, a branch (see Detour.hpp), and the engine's route from there. At the end the
/// person stands still: the noise fades out within `kFadingReadings` seconds, the level is right
/// from then on, and the last readings are exact. Noise may have led the engine elsewhere by then;
/// the person goes there without noise, to the last node of that way, and finally to the
/// destination itself.
///
/// All is done with the engine at the same time, so that what comes out is known to arrive. One who
/// is at the destination already is not seen to move: there is the route alone.
///
/// Works on the main configuration, and on the graph of `building`, which the engine must have. To
/// be called on the main thread, which serves the main queue. The same building, options and
/// settings give the same operations.
///
/// @throws InputError when an option is out of its range, or the walk would take more than
///   `kMostReadings` seconds
/// @throws NoWalkError when there is no way to walk, no branch for a detour, or no arrival
std::vector<TraceOperation> simulateWalk(const Building& building, const WalkOptions& options);

inline constexpr int kFadingReadings = 5;
inline constexpr int kExactReadings = 3;
inline constexpr double kMostReadings = 100000;

}  // namespace KorvaniTools
