#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Buildings/PlainBuilding.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"

namespace KorvaniBenchmarks {

/// The engine's graph of a building: a region a level, and points whose identifiers are the
/// indexes of the nodes.
std::shared_ptr<KorvaniNavigation::KRVNavGraph> makeEngineGraph(const PlainBuilding& building);

/// The points of a graph in the order of their identifiers, which are those that `makeEngineGraph`
/// gives.
std::vector<std::shared_ptr<KorvaniNavigation::KRVNavPoint>> pointsOf(
    const KorvaniNavigation::KRVNavGraph& graph);

}  // namespace KorvaniBenchmarks
