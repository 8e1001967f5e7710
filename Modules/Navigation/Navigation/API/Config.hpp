#pragma once

#include <atomic>
#include <cstdint>

#include "Common/Config.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

/// Everything about the engine that can be tuned, as one shared object.
///
/// A configuration belongs to a named bundle (`ConfigDependents`); tasks made for that name
/// read it whenever they need a value, so a change is seen by their next step. The fields that
/// settings screens list are also reachable by key through `KRVNavigationConfigItem`, from
/// which their defaults come.
///
///     auto& config = Navigation::sharedInstance().config();
///     config.setActivateRouteOptimisation(true);
///     config.setTargetProximityDistance(3.0);
///
/// Thread safety: every field may be read and written from any thread. A host that changes
/// `levelHeight` should do so before it builds its graph, since edges made without a length
/// take theirs from it.
class KORVANI_API Config : public KorvaniCommon::Config {
 public:
  /// Takes every default that has an item from that item; `levelHeight` is 3.0 m and
  /// `walkingSpeed` 1.5 m/s.
  Config();

  /// Height of one level in metres; enters every distance between two points, default 3.0.
  double levelHeight() const { return levelHeight_; }
  void setLevelHeight(double metres) { levelHeight_ = metres; }

  /// Metres under which a point counts as reached or near, default 5.0.
  double targetProximityDistance() const { return targetProximityDistance_; }
  void setTargetProximityDistance(double metres) { targetProximityDistance_ = metres; }

  /// Whether positions are snapped onto the path, default false. For the host, which decides by
  /// it whether it runs snapping tasks: the tasks themselves snap whatever it says.
  bool activateNavigationPathSnapping() const { return activateNavigationPathSnapping_; }
  void setActivateNavigationPathSnapping(bool on) { activateNavigationPathSnapping_ = on; }

  /// Whether position updates are checked against walls, default false. For the host, too: the
  /// checks do not read it.
  bool activateObstacleChecking() const { return activateObstacleChecking_; }
  void setActivateObstacleChecking(bool on) { activateObstacleChecking_ = on; }

  /// How near the route, in metres, the raw position of a snapping task must be for the person to
  /// be on the route, default 5.0.
  double navigationPathSnappingDistance() const { return navigationPathSnappingDistance_; }
  void setNavigationPathSnappingDistance(double metres) {
    navigationPathSnappingDistance_ = metres;
  }

  /// Whether positions stick to the path segment they were on before, default false.
  bool activateMagneticSnapping() const { return activateMagneticSnapping_; }
  void setActivateMagneticSnapping(bool on) { activateMagneticSnapping_ = on; }

  /// Whether new routing tasks use barrier-free edges only, default false.
  bool activateBarrierFreeNavigation() const { return activateBarrierFreeNavigation_; }
  void setActivateBarrierFreeNavigation(bool on) { activateBarrierFreeNavigation_ = on; }

  /// Whether the corners of computed routes are cut, default false.
  bool activateRouteOptimisation() const { return activateRouteOptimisation_; }
  void setActivateRouteOptimisation(bool on) { activateRouteOptimisation_ = on; }

  /// Metres by which the segment stuck to may be farther or nearer than the nearest one, default
  /// 3.0.
  float magneticPathSnappingDistanceThreshold() const {
    return magneticPathSnappingDistanceThreshold_;
  }
  void setMagneticPathSnappingDistanceThreshold(float metres) {
    magneticPathSnappingDistanceThreshold_ = metres;
  }

  /// Number of updates after which a position no longer sticks, default 5.
  std::int64_t magneticPathSnappingFallbackThreshold() const {
    return magneticPathSnappingFallbackThreshold_;
  }
  void setMagneticPathSnappingFallbackThreshold(std::int64_t count) {
    magneticPathSnappingFallbackThreshold_ = count;
  }

  /// Walking speed in metres per second, default 1.5. Routes are timed with the default speed
  /// whatever is set here; see `Route`.
  double walkingSpeed() const { return walkingSpeed_; }
  void setWalkingSpeed(double metresPerSecond) { walkingSpeed_ = metresPerSecond; }

  /// Whether a route search tests the graph nodes near a destination against the walls of the
  /// destination's own region rather than against those of the start's region. Default false.
  /// Worth switching on in buildings whose levels have walls in different places: the walls of
  /// the start's level can hide every node near a destination on another level.
  bool checkDestinationsAgainstOwnWalls() const { return checkDestinationsAgainstOwnWalls_; }
  void setCheckDestinationsAgainstOwnWalls(bool on) { checkDestinationsAgainstOwnWalls_ = on; }

 private:
  std::atomic<double> levelHeight_;
  std::atomic<double> targetProximityDistance_;
  std::atomic<bool> activateNavigationPathSnapping_;
  std::atomic<bool> activateObstacleChecking_;
  std::atomic<double> navigationPathSnappingDistance_;
  std::atomic<bool> activateMagneticSnapping_;
  std::atomic<bool> activateBarrierFreeNavigation_;
  std::atomic<bool> activateRouteOptimisation_;
  std::atomic<float> magneticPathSnappingDistanceThreshold_;
  std::atomic<std::int64_t> magneticPathSnappingFallbackThreshold_;
  std::atomic<double> walkingSpeed_;
  std::atomic<bool> checkDestinationsAgainstOwnWalls_;
};

}  // namespace KorvaniNavigation
