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
/// Where identifiers may have changed since it was found out which points are equal, a set can tell
/// its points apart as objects:
///
///   PointSet objects(PointSet::Telling::objects);
///
/// The set does not hold its points: they must outlive it, and keep their identifiers where it goes
/// by these. Thread safety: that of a standard container.

#include <cstdint>
#include <unordered_set>

#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniNavigation {

class PointSet {
 public:
  /// How points are told apart.
  enum class Telling { equality, objects };

  explicit PointSet(Telling telling = Telling::equality) : telling_(telling) {}

  /// Adds a point; false when it, or an equal one, is there already.
  bool insert(const KRVNavPoint& point) {
    if (isObject(point)) return objects_.insert(&point).second;
    return identifiers_.insert(point.identifier()).second;
  }

  /// Whether the point, or an equal one, is there.
  bool contains(const KRVNavPoint& point) const {
    if (isObject(point)) return objects_.contains(&point);
    return identifiers_.contains(point.identifier());
  }

 private:
  bool isObject(const KRVNavPoint& point) const {
    return telling_ == Telling::objects || point.identifier() < 0;
  }

  Telling telling_;
  std::unordered_set<std::int64_t> identifiers_;
  std::unordered_set<const KRVNavPoint*> objects_;
};

}  // namespace KorvaniNavigation
