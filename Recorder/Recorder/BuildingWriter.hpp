#pragma once

// Internal. A graph as the text of a building file.

#include <cstddef>
#include <string>
#include <vector>

#include "Navigation/Graph/KRVNavGraph.hpp"

namespace KorvaniRecorder {

// The building file of a graph that has no faults (`graphFaults`): GeoJSON, a feature a line.
//
// Read back, it is the same graph: regions, nodes, edges and obstacles with equal values, and all
// of them in the same order, since of two equal ways the engine takes the one it meets first.
// Regions are called "region 1", "region 2", ... in the graph's order, so that nodes and obstacles
// can name theirs. Every edge is one-way and has its distance, whatever the level height. An
// obstacle that lies in several regions is written once for each.
//
// One thing a building file cannot say is a distance of 0. An edge of that length is written
// without any, and gets it again when the level height is 0 as well; `edgesWithoutDistance` counts
// them. Cost: linear in the graph, about two seconds per million features.
struct BuildingText {
  std::string text;
  std::size_t edgesWithoutDistance = 0;
};

BuildingText buildingText(const KorvaniNavigation::KRVNavGraph& graph);

}  // namespace KorvaniRecorder
