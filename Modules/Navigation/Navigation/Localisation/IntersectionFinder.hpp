#pragma once

#include <memory>

#include "Common/Guarded.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class ObstacleDetector;
class RegionFinder;

/// The geometry of putting a position onto an edge, and, as an object, what a configuration
/// keeps for it.
///
/// The static functions are pure: the foot of a perpendicular, whether a coordinate lies on a
/// segment, and whether two segments run along each other.
///
///     const MKMapPoint foot =
///         IntersectionFinder::findIntersectionPointForPointOnLine(position, start, end);
///
/// An instance holds the region finder of one configuration bundle and an obstacle detector.
/// The bundle makes it on first use, with a region finder that was told to read the graph's
/// regions.
///
/// Thread safety: everything may be called from any thread.
class KORVANI_API IntersectionFinder {
 public:
  /// Keeps `regionFinder`, and refers to its bundle without keeping it alive.
  IntersectionFinder(std::shared_ptr<RegionFinder> regionFinder,
                     std::weak_ptr<ConfigDependents> configDependents);
  ~IntersectionFinder();

  IntersectionFinder(const IntersectionFinder&) = delete;
  IntersectionFinder& operator=(const IntersectionFinder&) = delete;

  /// The region finder given at creation.
  const std::shared_ptr<RegionFinder>& regionFinder() const { return regionFinder_; }

  /// The walls around the position of this configuration; null until a host sets them, since
  /// the tasks keep detectors of their own.
  std::shared_ptr<ObstacleDetector> obstacleDetector() const;
  void setObstacleDetector(std::shared_ptr<ObstacleDetector> obstacleDetector);

  /// The bundle this finder belongs to; null when it is gone.
  std::shared_ptr<ConfigDependents> configDependents() const { return configDependents_.lock(); }

  /// Foot of the perpendicular from `point` onto the infinite line through `lineStart` and
  /// `lineEnd`, on the map plane. Not clamped to the segment. When both ends are the same the
  /// result is not a number, and every comparison with it fails.
  static MKMapPoint findIntersectionPointForPointOnLine(MKMapPoint point, MKMapPoint lineStart,
                                                        MKMapPoint lineEnd);

  /// Whether `coordinate` lies on the segment: the way over it is longer than the segment by
  /// less than a thousandth of the segment's length, and by less than half a metre. Nothing
  /// lies on a segment of no length.
  static bool coordinateIsBetweenCoordinates(CLLocationCoordinate2D coordinate,
                                             CLLocationCoordinate2D segmentStartCoordinate,
                                             CLLocationCoordinate2D segmentEndCoordinate);

  /// Whether the segments a-b and c-d run the same way and overlap, be it in one point.
  ///
  /// Segments with the same bounding box (within 0.000004 degrees at both corners) do. Of
  /// others, the diagonals of the boxes from south-west to north-east must agree in bearing
  /// within 4 degrees, plainly subtracted; the diagonal stands for the segment even where the
  /// segment itself falls from north-west to south-east. Then an end of one must lie between
  /// the ends of the other, from both sides: (c on a-b or a on c-d) and (d on a-b or b on c-d).
  ///
  /// The last parameter keeps the spelling under which hosts know it.
  static bool checkIfLineBetweenCoordinate(CLLocationCoordinate2D a,
                                           CLLocationCoordinate2D andCoordinate,
                                           CLLocationCoordinate2D liesOnLineBetween,
                                           CLLocationCoordinate2D andCoordiante);

 private:
  std::shared_ptr<RegionFinder> regionFinder_;
  KorvaniCommon::Guarded<std::shared_ptr<ObstacleDetector>> obstacleDetector_;
  std::weak_ptr<ConfigDependents> configDependents_;
};

}  // namespace KorvaniNavigation
