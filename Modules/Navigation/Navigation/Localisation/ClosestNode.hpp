#pragma once

// Internal.

#include <memory>

namespace KorvaniNavigation {

class KRVNavPoint;

/// A graph node near a position, with its distance from the position in metres.
struct ClosestNode {
  std::shared_ptr<KRVNavPoint> node;
  double distance;
};

}  // namespace KorvaniNavigation
