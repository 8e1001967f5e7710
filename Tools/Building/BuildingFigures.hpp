#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "Building/Building.hpp"

namespace KorvaniTools {

/// How much of everything one level has.
struct LevelFigures {
  std::size_t regions = 0;
  std::size_t nodes = 0;
  std::size_t edges = 0;        ///< with both ends on the level
  std::size_t connections = 0;  ///< edges to other levels
  std::size_t obstacles = 0;    ///< obstacles of which something lies in a region
  std::size_t places = 0;
  std::size_t rooms = 0;
};

/// How the nodes hang together, directions of edges left aside.
struct ComponentFigures {
  std::size_t count = 0;    ///< groups of nodes that are joined with each other
  std::size_t largest = 0;  ///< nodes of the largest group
};

/// Figures about a building, as `korvani-nav info` shows them. Edges are counted as in the
/// file, a way in both directions as one.
struct BuildingFigures {
  std::map<std::int64_t, LevelFigures> levels;  ///< levels that have or name anything, ascending
  std::size_t oneway = 0;                       ///< edges entered in one direction only
  std::size_t barrierFree = 0;                  ///< edges without barriers
  std::map<std::string, std::size_t> edgeTypes;
  std::size_t obstacles = 0;  ///< obstacles of which something lies in a region
  std::size_t entrances = 0;  ///< places that are entrances
  ComponentFigures components;
  ComponentFigures stepFree;  ///< over barrier-free edges only
};

/// Counts. Cost: near linear in the building's size.
BuildingFigures figuresOf(const Building& building);

}  // namespace KorvaniTools
