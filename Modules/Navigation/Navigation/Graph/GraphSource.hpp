#pragma once

/// Where the layers above the graph get the current graphs from.
///
/// Localisation, routing and the tasks work on "the" graph: the building graph that the host
/// provided, or, while a route is followed, the small graph of that route. Both belong to the
/// module's facade. This role lets the lower layers ask for them without knowing it.
///
/// Thread safety: both may be asked for from any thread. The reference that comes back keeps its
/// graph alive, also when the host provides another one or cancels all tasks in the meantime.

#include <memory>

#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavGraph;

class KORVANI_API GraphSource {
 public:
  /// The building graph that the host provided last; absent before the first one, and after all
  /// tasks were cancelled.
  virtual std::shared_ptr<KRVNavGraph> graph() const = 0;

  /// The graph of the route that the active routing task follows; absent without an active routing
  /// task or while it has no route.
  virtual std::shared_ptr<KRVNavGraph> graphForActiveRoute() const = 0;

 protected:
  ~GraphSource() = default;
};

/// The source in force; the object lives as long as the process.
KORVANI_API const GraphSource& graphSource();

}  // namespace KorvaniNavigation
