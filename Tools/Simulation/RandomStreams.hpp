#pragma once

#include <cstdint>

namespace KorvaniTools {

/// What a simulation's random numbers are for. Each use has a stream of its own, so that switching
/// one on or off leaves the others as they were: the same seed gives the same noise with a detour
/// and without.
inline constexpr std::uint32_t kNoiseStream = 0;
inline constexpr std::uint32_t kLevelStream = 1;
inline constexpr std::uint32_t kDetourStream = 2;

}  // namespace KorvaniTools
