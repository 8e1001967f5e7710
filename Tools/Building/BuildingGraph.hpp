#pragma once

#include <memory>

#include "Building/Building.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"

namespace KorvaniTools {

/// The engine's graph of a building: its regions, then nodes, edges and obstacles, each in the
/// order of the building file, since what the engine does with equals depends on it.
///
/// An edge that is not one-way becomes two edges, first the one from `from` to `to`. An
/// obstacle line that lies in several regions is one object shared by them. Edges without a
/// distance get the engine's own distance of their nodes, which depends on the main
/// configuration's `levelHeight`: set that first. The graph is new and shares nothing with
/// `building`.
std::shared_ptr<KorvaniNavigation::KRVNavGraph> makeGraph(const Building& building);

}  // namespace KorvaniTools
