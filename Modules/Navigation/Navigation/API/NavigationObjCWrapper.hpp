#pragma once

#include "Platform/Export.hpp"

namespace KorvaniNavigation {

/// The two values of the main configuration that the graph classes depend on, as static
/// accessors. Every call reads the configuration anew, so that a change is seen by the very
/// next distance or nearness test.
///
/// Any thread may call them. The main configuration must exist (it does, once
/// `Navigation::sharedInstance()` was called; the first call here makes it).
class KORVANI_API NavigationObjCWrapper {
 public:
  NavigationObjCWrapper() = default;

  /// Height of one level in metres: the main configuration's `levelHeight`, 3.0 by default.
  static double defaultLevelHeight();

  /// Distance in metres under which a point counts as reached: the main configuration's
  /// `targetProximityDistance`, 5.0 by default.
  static double targetProximityDistance();
};

/// The name under which hosts know the accessors.
using KRVNavigationObjCWrapper = NavigationObjCWrapper;

}  // namespace KorvaniNavigation
