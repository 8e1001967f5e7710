#pragma once

// Internal.

#include <cstdint>
#include <memory>
#include <optional>

namespace KorvaniNavigation {

class Config;
class ConfigDependents;
class EdgeIntersection;
class Intersection;
class IntersectionTask;
class KRVNavPoint;
class SnappedPlace;

/// Maps positions onto the graph, and prefers the path segment on which a position was held
/// before: a reading that jumps to a parallel corridor and back should not make the dot jump.
///
/// With `activateMagneticSnapping` on, the held segment is kept as long as
/// - the position still has a place on it, not behind a wall,
/// - the nearest place of the graph is nearer or farther than that one by at most
///   `magneticPathSnappingDistanceThreshold` metres, and
/// - the nearest place has not been on the held segment's own line for
///   `magneticPathSnappingFallbackThreshold` counted positions in a row.
/// Otherwise the nearest place becomes the one that is held.
///
/// A snapper starts without a held place, and holding only goes from one place to the next:
/// nothing gives it a first one. So it returns the plain nearest place every time. That is the
/// behaviour hosts know and rely on; the machinery stands for the day on which a first place is
/// given.
///
/// One thread at a time.
class MagneticPathSnapper {
 public:
  /// Works with the bundle `configDependents`, which it does not keep alive.
  explicit MagneticPathSnapper(std::weak_ptr<ConfigDependents> configDependents);

  /// The place for a position: on the route that is being followed when that is of the same
  /// configuration, on the provided graph otherwise. Absent when nothing fits.
  /// Fatal error when the configuration is gone.
  std::shared_ptr<Intersection> perform(const std::shared_ptr<KRVNavPoint>& point);

  /// The same for who may not need the intersection itself.
  std::shared_ptr<const SnappedPlace> snap(const std::shared_ptr<KRVNavPoint>& point);

 private:
  friend struct MagneticPathSnapperPeer;  // of the tests, which give it a place to hold

  bool isOnOriginalGraph() const;
  std::shared_ptr<Intersection> nearestPlace(const std::shared_ptr<KRVNavPoint>& point,
                                             bool onOriginalGraph);
  std::shared_ptr<Intersection> magneticSnapping(
      const KRVNavPoint& point, const std::shared_ptr<Intersection>& currentIntersection);
  std::optional<double> magneticDistanceOf(const KRVNavPoint& point);
  bool isHeldNodeInSight(const KRVNavPoint& point) const;
  std::optional<double> followHeldSegment(EdgeIntersection& held, const KRVNavPoint& point);
  void countFallback(const std::shared_ptr<Intersection>& currentIntersection);
  std::shared_ptr<Intersection> fallBackTo(
      const std::shared_ptr<Intersection>& currentIntersection);

  std::weak_ptr<ConfigDependents> configDependents_;
  std::shared_ptr<IntersectionTask> intersectionTask_;  ///< of the last `perform`

  /// The place that is held on to. Only falling back sets it.
  std::shared_ptr<Intersection> previousIntersection_;
  /// The nearest place that was counted last against the held one.
  std::shared_ptr<Intersection>
      lastActuallyCalculatedNearestIntersectionIfDifferentFromMagneticallySnapped_;
  std::int64_t fallbackCounter_ = 0;
};

}  // namespace KorvaniNavigation
