#pragma once

/// A waypoint of the navigation graph: a coordinate on a level, and in most cases an identifier
/// under which the graph knows it.
///
///   auto door = std::make_shared<KRVNavPoint>(CLLocationCoordinate2D{48.1372, 11.5756}, 2, 17);
///   region->addNode(door);                       // from now on door->region() is that region
///   for (const auto& edge : door->neighbourEdges()) { ... }
///
/// Points are also how positions are handed around: a position has no identifier and belongs to no
/// region.
///
/// Equality and hash. Two points with identifiers (0 and above) are equal when the identifiers are,
/// wherever they lie; a point without one (below 0) equals itself only. The hash is the object's
/// identity all the same, so equal points hash differently: collections of points are keyed by
/// identifierNumber(), never by the point.
///
/// Ownership: shared; a region holds its points, a point refers to its region weakly. A point is
/// not copyable, its identity matters.
///
/// Thread safety: region(), location() and identifierNumber() and their setters may be called from
/// any thread at any time. Everything else is safe to read from many threads as long as nobody
/// writes: a graph must not change while tasks run.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "Common/SeqLocked.hpp"
#include "Navigation/Graph/WatchFlag.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavEdge;
class KRVNavRegion;

class KORVANI_API KRVNavPoint : public std::enable_shared_from_this<KRVNavPoint> {
 public:
  /// A point without identifier: the same as the next with identifier -1.
  KRVNavPoint(CLLocationCoordinate2D coordinate, std::int64_t level);

  /// `coordinate` in degrees. location() is made here: at the coordinate, its altitude the level's
  /// number (not metres), both accuracies 0, taken now.
  KRVNavPoint(CLLocationCoordinate2D coordinate, std::int64_t level, std::int64_t identifier);

  ~KRVNavPoint();
  KRVNavPoint(const KRVNavPoint&) = delete;
  KRVNavPoint& operator=(const KRVNavPoint&) = delete;

  /// The node's number in the graph; -1 for a point made without one.
  std::int64_t identifier() const { return identifier_; }
  void setIdentifier(std::int64_t identifier);

  /// The same number as the key under which graphs and regions file the point. Equal to
  /// identifier() unless a host sets one without the other.
  std::int64_t identifierNumber() const { return identifierNumber_.load(); }
  void setIdentifierNumber(std::int64_t number);

  /// Position in degrees.
  CLLocationCoordinate2D coordinate() const { return coordinate_; }
  void setCoordinate(CLLocationCoordinate2D coordinate);

  /// The floor.
  std::int64_t level() const { return level_; }
  void setLevel(std::int64_t level);

  /// The location that distances are measured from. It is made once, by the constructor: changing
  /// coordinate or level afterwards does not move it.
  CLLocation location() const;
  void setLocation(CLLocation location);

  /// The region that the point was added to last; absent before, and once the region is gone.
  std::shared_ptr<KRVNavRegion> region() const;
  void setRegion(const std::shared_ptr<KRVNavRegion>& region);

  /// The edges that start here, in the order in which the graph of the point's region lists them.
  /// Empty for a point without region, without graph, or without outgoing edge.
  std::vector<std::shared_ptr<KRVNavEdge>> neighbourEdges() const;

  /// Metres from here to `other`: sqrt(ground * ground + h * h), where ground is the great-circle
  /// distance of the two locations and h the main configuration's level height. The height counts
  /// always, on one level and across any number of levels alike: stored edge lengths and proximity
  /// thresholds are made with it. So the distance of a point to itself is h.
  double distanceFrom(const KRVNavPoint& other) const;

  /// Whether `other` is on this level and strictly nearer, by distanceFrom, than the main
  /// configuration's target proximity distance.
  bool locatedNearPoint(const KRVNavPoint& other) const;

  /// The first of `points` (none of them null), in their order, that is near; not the nearest.
  /// Absent when none is.
  std::shared_ptr<KRVNavPoint> locatedNearPoints(
      const std::vector<std::shared_ptr<KRVNavPoint>>& points) const;

  /// Equality as described above; nothing (null) equals no point.
  bool isEqual(const KRVNavPoint& other) const;
  bool isEqual(const KRVNavPoint* other) const;

  /// The object's identity: different for any two points alive at the same time.
  std::size_t hash() const;

 private:
  friend struct GraphAccess;

  std::int64_t identifier_;
  std::atomic<std::int64_t> identifierNumber_;
  CLLocationCoordinate2D coordinate_;
  std::int64_t level_;
  WatchFlag isWatched_;
  mutable std::atomic<std::uint32_t> place_{0xFFFFFFFF};  // in the graph's compiled form
  KorvaniCommon::SeqLocked<CLLocation> location_;
  std::weak_ptr<KRVNavRegion> region_;
};

}  // namespace KorvaniNavigation
