#include "Navigation/API/NavigationObjCWrapper.hpp"

#include "Navigation/Graph/GraphSettings.hpp"

namespace KorvaniNavigation {

double NavigationObjCWrapper::defaultLevelHeight() { return graphSettings().levelHeight(); }

double NavigationObjCWrapper::targetProximityDistance() {
  return graphSettings().targetProximityDistance();
}

}  // namespace KorvaniNavigation
