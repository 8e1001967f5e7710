#pragma once

/// The wave search on arrays, written down in the plainest way: every path is a list of its own.

#include <optional>

#include "Navigation/Path Finding/Arrays/SearchGraph.hpp"

namespace KorvaniTest {

std::optional<KorvaniNavigation::FoundPath> plainWaves(const KorvaniNavigation::SearchGraph& graph,
                                                       const KorvaniNavigation::SearchQuery& query);

}  // namespace KorvaniTest
