#pragma once

/// The textbook's shortest-path search, with a priority queue, on plain numbers. Nothing of it is
/// shared with the engine.

#include <optional>

#include "PathFindingCase.hpp"

namespace KorvaniTest {

/// Cost of the cheapest way of at least one edge from a start to a destination; absent when there
/// is none. No way leads on from a destination. A destination that is a start too is reached only
/// by a way that costs less than the start's own distance. Costs must not be negative.
std::optional<double> textbookCost(const PathFindingCase& problem);

}  // namespace KorvaniTest
