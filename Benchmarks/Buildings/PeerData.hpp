#pragma once

#include <cstdint>

#include "Buildings/PlainBuilding.hpp"
#include "Peers/PathQuery.hpp"
#include "Peers/PlaneLines.hpp"

namespace KorvaniBenchmarks {

/// A building's graph as the path searches of peers take it: all of it, or the barrier-free edges
/// only.
Arcs arcsOf(const PlainBuilding& building, bool barrierFree);

/// The walls of one level on the map plane.
PlaneLines planeLinesOf(const PlainBuilding& building, std::int64_t level);

}  // namespace KorvaniBenchmarks
