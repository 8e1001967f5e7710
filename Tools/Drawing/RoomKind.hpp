#pragma once

#include <string>
#include <string_view>

namespace KorvaniTools {

/// What a room or place is for, as far as a drawing tells it apart.
enum class RoomKind {
  other,      ///< a room whose use is not known
  corridor,   ///< halls, walkways and other floor that leads somewhere
  office,     ///< offices, staff and meeting rooms
  classroom,  ///< class rooms, auditoriums, laboratories, libraries
  shop,
  food,
  toilet,
  service,  ///< counters, tickets, security, medical, luggage
  waiting,  ///< gates, lounges, platforms, seats
  stairs,   ///< stairs and escalators
  elevator,
  outdoor,
  closed,  ///< nobody gets in: voids, shafts, machine rooms, tracks
};

/// The kind that a category of a building file stands for ("restroom.female", "gate"). Capitals
/// do not matter; what is not known is `other`.
RoomKind roomKindOf(std::string_view category);

/// The kind in one word without blanks, as it stands in class names: "toilet".
std::string_view nameOf(RoomKind kind);

/// The kind as people call it: "Toilets".
std::string_view wordsFor(RoomKind kind);

/// What changes the level, or is walked over within one.
enum class ConnectionSymbol { path, stairs, escalator, elevator, ramp, ladder };

/// The symbol for an edge's type ("lift", "steps"); `path` for what is not known.
ConnectionSymbol connectionSymbolOf(std::string_view type);

/// The symbol in one word without blanks: "stairs", "elevator", "path".
std::string_view nameOf(ConnectionSymbol symbol);

/// The symbol as people call it: "Stairs", "Lift", "Way to another level".
std::string_view wordsFor(ConnectionSymbol symbol);

}  // namespace KorvaniTools
