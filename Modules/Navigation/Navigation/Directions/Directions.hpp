#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Navigation/Directions/DirectionsArrow.hpp"
#include "Navigation/Directions/DirectionsType.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;

/// One turn-by-turn instruction of a route: in 12.5 m turn left.
///
/// A value that never changes after it was made. Besides its fields it gives them as a
/// dictionary of numbers, strings and dictionaries, which hosts in other languages read or
/// serialise as it is:
///
///     for (const Directions& instruction : route.directions()) {
///       show(instruction.description());               // "12.5,left"
///       send(instruction.directionsJson());
///     }
///
/// Copies share everything, so they are cheap. The dictionary is made when it is first asked for:
/// most hosts read the fields or the dictionary, and a route has dozens of instructions.
/// Thread safety: may be read from any thread.
class KORVANI_API Directions {
 public:
  /// An empty instruction: `unknown`, 0 m, and nothing else. Its dictionary has two entries
  /// only, the raw value 0 and the distance 0.0.
  Directions();

  /// An instruction that applies after `distance` metres. `nextWaypoint` may be null; the
  /// dictionary keeps the place the waypoint has now.
  Directions(DirectionsType type, double distance, std::shared_ptr<KRVNavPoint> nextWaypoint,
             std::optional<DirectionsArrow> arrow, std::optional<std::string> levelChangeTypeName);

  /// What to do.
  DirectionsType type() const;

  /// Metres until the instruction applies.
  double distance() const;

  /// The route point at which the instruction applies; null when it names none.
  const std::shared_ptr<KRVNavPoint>& nextWaypoint() const;

  /// Where to draw an arrow; absent when there is nothing to draw.
  const std::optional<DirectionsArrow>& arrow() const;

  /// The kind of connection by which the level changes ("stairs"), as the graph names it.
  const std::optional<std::string>& levelChangeTypeName() const;

  /// The instruction as a dictionary, keyed by the `kKRVIndoorTurnByTurn...` constants of
  /// API/Constants.hpp.
  ///
  /// Seven entries: type (integer), distance (double), level of the arrow (integer), the
  /// waypoint's place, the arrow's place, heading of the arrow (double) and kind of
  /// connection (string). A place is a dictionary of latitude and longitude (doubles) and an
  /// altitude that is the level number (integer). Without an arrow its numbers are 0; without
  /// a waypoint the waypoint's place repeats the arrow's; without a kind it is "".
  const Dictionary& directionsJson() const;

  /// Distance and case name for logs and tests, as "12.5,left" or "12.0,destination": the
  /// distance with up to 15 significant digits, always with a fractional part or an exponent.
  std::string description() const;

 private:
  struct Contents;

  const Contents& contents() const;

  std::shared_ptr<const Contents> contents_;  ///< null for an empty instruction
};

}  // namespace KorvaniNavigation
