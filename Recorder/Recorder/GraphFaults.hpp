#pragma once

// Internal. What keeps a graph from being written as a building file.
//
// The graph classes check nothing, and a host may fill them in ways that a building file has no
// words for: a point filed under another number, an edge to nowhere, a level beyond all levels. A
// file that leaves such a thing out would replay as another building.

#include <string>
#include <vector>

#include "Navigation/Graph/KRVNavGraph.hpp"

namespace KorvaniRecorder {

// What a building file cannot hold of `graph`, each naming what, where, and what was expected; none
// when it can hold all of it. After twenty the search ends: a graph that is wrong is mostly wrong
// everywhere.
//
// What the engine never reads may be lost and is no fault: an obstacle's hasStrength, and of a
// location everything but its coordinate.
std::vector<std::string> graphFaults(const KorvaniNavigation::KRVNavGraph& graph);

}  // namespace KorvaniRecorder
