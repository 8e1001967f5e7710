#include "Building/Rectangle.hpp"

#include <algorithm>

namespace KorvaniTools {

void Rectangle::include(Coordinate coordinate) { include(Rectangle{coordinate, coordinate}); }

void Rectangle::include(const Rectangle& other) {
  southWest.latitude = std::min(southWest.latitude, other.southWest.latitude);
  southWest.longitude = std::min(southWest.longitude, other.southWest.longitude);
  northEast.latitude = std::max(northEast.latitude, other.northEast.latitude);
  northEast.longitude = std::max(northEast.longitude, other.northEast.longitude);
}

bool Rectangle::contains(Coordinate coordinate) const {
  return touches(Rectangle{coordinate, coordinate});
}

bool Rectangle::touches(const Rectangle& other) const {
  return southWest.latitude <= other.northEast.latitude &&
         other.southWest.latitude <= northEast.latitude &&
         southWest.longitude <= other.northEast.longitude &&
         other.southWest.longitude <= northEast.longitude;
}

}  // namespace KorvaniTools
