#pragma once

#include "Support/Suite.hpp"

namespace KorvaniBenchmarks {

/// Each adds the rows of one or two tables.

void addPathSearches(const Extent& extent);
void addWalls(const Extent& extent);
void addNearestNodes(const Extent& extent);
void addRoutes(const Extent& extent);
void addUpdates(const Extent& extent);
void addSetUp(const Extent& extent);
void addLoading(const Extent& extent);

}  // namespace KorvaniBenchmarks
