#pragma once

#include <memory>
#include <vector>

namespace KorvaniNavigation {

class KRVNavPoint;

/// A way from a start point to the point that it reaches, both included, and what it costs: the
/// start's distance and its edges' costs, in metres.
struct PointPath {
  std::vector<std::shared_ptr<KRVNavPoint>> nodes;
  double distance = 0;
};

}  // namespace KorvaniNavigation
