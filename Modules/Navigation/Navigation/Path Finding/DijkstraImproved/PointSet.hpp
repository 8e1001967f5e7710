#pragma once

/// A set of points told apart by point equality, with membership in constant time.
///
/// Equal points may hash differently (see KRVNavPoint), so no hashed container of points can do
/// this. What KRVNavPoint::isEqual compares is the identifier of points that have one and the
/// object of those that have none; the set keys the two kinds accordingly.
///
///   PointSet seen;
///   if (seen.insert(*point)) { ... }   // no equal point was there
///
/// The set does not hold its points: they must outlive it, and keep their identifiers. Thread
/// safety: that of a standard container.

#include <cstdint>
#include <unordered_set>

#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniNavigation {

class PointSet {
 public:
  /// Adds a point; false when an equal one is there already.
  bool insert(const KRVNavPoint& point) {
    if (point.identifier() < 0) return objects_.insert(&point).second;
    return identifiers_.insert(point.identifier()).second;
  }

  /// Whether an equal point is there.
  bool contains(const KRVNavPoint& point) const {
    if (point.identifier() < 0) return objects_.contains(&point);
    return identifiers_.contains(point.identifier());
  }

 private:
  std::unordered_set<std::int64_t> identifiers_;
  std::unordered_set<const KRVNavPoint*> objects_;
};

}  // namespace KorvaniNavigation
