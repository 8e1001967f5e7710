#include "Navigation/Directions/DirectionsFinder.hpp"

namespace KorvaniNavigation {

DirectionsFinder::~DirectionsFinder() = default;

}  // namespace KorvaniNavigation
