#pragma once

/// A wall or another thing that people do not walk through: a polyline or polygon, optionally with
/// a strength.
///
///   region->addObstacle(std::make_shared<KRVNavObstacle>(
///       std::vector<CLLocationCoordinate2D>{{48.1, 11.5}, {48.1, 11.6}}, 3));
///
/// Two obstacles are equal only when they are the same object, even if their coordinates and
/// strengths agree.
///
/// Ownership: shared; regions hold their obstacles. An obstacle is not copyable.
///
/// Thread safety: safe to read from many threads as long as nobody writes.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Navigation/Graph/WatchFlag.hpp"
#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KORVANI_API KRVNavObstacle {
 public:
  /// An obstacle without strength (0). `coordinates` are its corners in order.
  explicit KRVNavObstacle(std::vector<CLLocationCoordinate2D> coordinates);

  /// `strength` is stored as given; hasStrength() becomes true for a positive one only.
  KRVNavObstacle(std::vector<CLLocationCoordinate2D> coordinates, std::int64_t strength);

  ~KRVNavObstacle();
  KRVNavObstacle(const KRVNavObstacle&) = delete;
  KRVNavObstacle& operator=(const KRVNavObstacle&) = delete;

  /// The corners in order, in degrees.
  const std::vector<CLLocationCoordinate2D>& coordinates() const { return coordinates_; }
  void setCoordinates(std::vector<CLLocationCoordinate2D> coordinates);

  /// How strong the map data says the obstacle is; 0 when it does not say.
  std::int64_t strength() const { return strength_; }
  void setStrength(std::int64_t strength) { strength_ = strength; }

  /// Whether a positive strength was given at construction. Setting a strength later does not
  /// change it.
  bool hasStrength() const { return hasStrength_; }
  void setHasStrength(bool hasStrength) { hasStrength_ = hasStrength; }

  /// The corner at `index`, counted from 0. Throws std::out_of_range for any other index: the only
  /// exception that leaves the module.
  CLLocationCoordinate2D coordinateAt(std::int64_t index) const;

  /// The object's identity, and equality by it.
  std::size_t hash() const;
  bool isEqual(const KRVNavObstacle& other) const;

 private:
  friend struct GraphAccess;

  std::vector<CLLocationCoordinate2D> coordinates_;
  std::int64_t strength_;
  bool hasStrength_;
  WatchFlag isWatched_;
};

/// The same as isEqual: whether both are one object.
inline bool operator==(const KRVNavObstacle& a, const KRVNavObstacle& b) { return a.isEqual(b); }

}  // namespace KorvaniNavigation
