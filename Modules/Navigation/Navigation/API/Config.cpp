#include "Navigation/API/Config.hpp"

#include "Navigation/API/KRVNavigationConfigItem.hpp"

namespace KorvaniNavigation {

using Item = KRVNavigationConfigItem;

Config::Config()
    : levelHeight_(3.0),
      targetProximityDistance_(
          Item::navigationTargetProximityDistance.defaultValue().doubleValue()),
      activateNavigationPathSnapping_(
          Item::activateNavigationPathSnapping.defaultValue().boolValue()),
      activateObstacleChecking_(Item::activateObstacleChecking.defaultValue().boolValue()),
      navigationPathSnappingDistance_(
          Item::navigationPathSnappingDistance.defaultValue().doubleValue()),
      activateMagneticSnapping_(
          Item::navigationActivateMagneticSnapping.defaultValue().boolValue()),
      activateBarrierFreeNavigation_(
          Item::navigationActivateBarrierFreeNavigation.defaultValue().boolValue()),
      activateRouteOptimisation_(
          Item::navigationActivateRouteOptimisation.defaultValue().boolValue()),
      magneticPathSnappingDistanceThreshold_(
          Item::navigationMagneticPathSnappingDistanceThreshold.defaultValue().floatValue()),
      magneticPathSnappingFallbackThreshold_(
          Item::navigationMagneticPathSnappingFallbackThreshold.defaultValue().integerValue()),
      walkingSpeed_(1.5),
      checkDestinationsAgainstOwnWalls_(false) {}

}  // namespace KorvaniNavigation
