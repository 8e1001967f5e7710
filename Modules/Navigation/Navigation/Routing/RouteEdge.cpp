#include "Navigation/Routing/RouteEdge.hpp"

#include <utility>

#include "Navigation/Graph/GraphAccess.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

RouteEdge::RouteEdge(const KRVNavEdge& edge)
    : distance(edge.distance()),
      multiplicator(edge.multiplicator()),
      isBarrierFree(edge.isBarrierFree()) {
  auto parts = GraphAccess::partsOf(edge);
  start = std::move(parts.start);
  end = std::move(parts.end);
  type = std::move(parts.type);
  if (!start || !end) KORVANI_FATAL("an edge of a way lacks an end");
}

RouteEdge::RouteEdge(std::shared_ptr<KRVNavPoint> from, std::shared_ptr<KRVNavPoint> to,
                     double metres)
    : start(std::move(from)), end(std::move(to)), distance(metres) {}

}  // namespace KorvaniNavigation
