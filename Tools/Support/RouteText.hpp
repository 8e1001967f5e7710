#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Building/Rectangle.hpp"
#include "Navigation/Directions/Directions.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Support/LevelNames.hpp"

namespace KorvaniTools {

/// One instruction as a person reads it, and where it applies.
struct Instruction {
  std::string text;  ///< e.g. "in 8 m turn left"; no full stop, no line feed
  Coordinate at;
  std::int64_t level = 0;
};

/// A route's instructions in words, one after the other:
///
///     go straight on for 25 m
///     turn left, then 8 m
///     after these 8 m take the lift up to level 4 (12 m)
///     in 14 m you reach Library
///
/// Distances are whole metres. Those of level changes are given by themselves, in brackets, so
/// that the others are what is walked on a level: what is announced on the way from one change
/// to the next adds up to the route's length. Level changes by the same connection without a
/// walk between them are one instruction. A change in the very first step is told although the
/// engine has no instruction for it.
///
/// @param route with its instructions, as a routing task delivers it; it may have been
///     shortened while walking
/// @param destination what the last instruction calls the place that is reached
/// @return at least one instruction for a route with steps and instructions; none otherwise
std::vector<Instruction> routeInstructions(const KorvaniNavigation::Route& route,
                                           const LevelNames& levels,
                                           const std::string& destination);

/// "turn left", "bear right" and the like; "go on" for what is no turn.
std::string turnWords(KorvaniNavigation::DirectionsType type);

/// Which way the route sets off: "north-east"; empty when it has no steps or begins with a
/// change of level on the spot.
std::string setOffDirection(const KorvaniNavigation::Route& route);

}  // namespace KorvaniTools
