#pragma once

#include <cstddef>
#include <cstdint>

#include "Buildings/PlainBuilding.hpp"

namespace KorvaniBenchmarks {

/// Makes buildings of any size, from a seed.

/// An office building or hospital: on every level a grid of corridors with rooms on both sides,
/// open halls here and there, stairs and lifts through all levels, some steps in corridors, some
/// doors that lead one way only.
///
/// It has about `nodes` nodes (within a tenth from 1,000 on), evenly on `levels` levels, 2.4 to 3.2
/// directed edges a node, and a wall segment a node or a little more. Nothing is at a round place
/// or of a round length, so two ways are hardly ever equally long. The same arguments make the same
/// building on every machine.
PlainBuilding makeOffices(std::size_t nodes, std::size_t levels, std::uint64_t seed);

/// A square lattice on one level, `nodes` rounded to a square: every node is joined with its four
/// neighbours by ways of exactly 5 m. There are so many equally long ways that it is the worst case
/// for a search that has to know which of them comes first. Without walls.
PlainBuilding makeLattice(std::size_t nodes);

}  // namespace KorvaniBenchmarks
