#pragma once

#include <memory>

#include "Navigation/API/ConfigDependents.hpp"
#include "Navigation/API/Navigation.hpp"

namespace KorvaniBenchmarks {

/// The engine as hosts use it, with all its work on this thread.

/// The bundle of the main configuration.
std::shared_ptr<KorvaniNavigation::ConfigDependents> mainConfiguration();

/// Provides a graph and announces it; whatever belonged to an earlier one is let go.
void provide(const std::shared_ptr<KorvaniNavigation::KRVNavGraph>& graph);

/// Does all that waits, the tasks' own work included.
void pump();

}  // namespace KorvaniBenchmarks
