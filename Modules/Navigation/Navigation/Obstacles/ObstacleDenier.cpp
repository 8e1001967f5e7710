#include "Navigation/Obstacles/ObstacleDenier.hpp"

namespace KorvaniNavigation {

ObstacleDenier::~ObstacleDenier() = default;

}  // namespace KorvaniNavigation
