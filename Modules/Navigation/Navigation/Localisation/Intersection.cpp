#include "Navigation/Localisation/Intersection.hpp"

#include <utility>

namespace KorvaniNavigation {

Intersection::Intersection(std::shared_ptr<KRVNavPoint> node, double distance, double delta)
    : node_(std::move(node)), distance_(distance), delta_(delta) {}

Intersection::~Intersection() = default;

SingleNodeIntersection::~SingleNodeIntersection() = default;

}  // namespace KorvaniNavigation
