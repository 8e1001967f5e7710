#include "Drawing/SceneFrame.hpp"

#include <cmath>

namespace KorvaniTools {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;
constexpr double kMetresPerLatitude = KorvaniPlatform::kEarthRadius * kDegree;

}  // namespace

SceneFrame::SceneFrame(const Rectangle& rectangle, double margin)
    : margin_(margin), width_(2 * margin), height_(2 * margin) {
  if (!(rectangle.southWest.latitude <= rectangle.northEast.latitude)) return;
  northWest_ = Coordinate{rectangle.northEast.latitude, rectangle.southWest.longitude};
  const double middle = (rectangle.southWest.latitude + rectangle.northEast.latitude) / 2;
  metresPerLongitude_ = kMetresPerLatitude * std::cos(middle * kDegree);
  width_ += (rectangle.northEast.longitude - rectangle.southWest.longitude) * metresPerLongitude_;
  height_ += (rectangle.northEast.latitude - rectangle.southWest.latitude) * kMetresPerLatitude;
}

ScenePoint SceneFrame::at(Coordinate coordinate) const {
  return {margin_ + (coordinate.longitude - northWest_.longitude) * metresPerLongitude_,
          margin_ + (northWest_.latitude - coordinate.latitude) * kMetresPerLatitude};
}

SceneLine SceneFrame::at(const std::vector<Coordinate>& coordinates) const {
  SceneLine line;
  line.reserve(coordinates.size());
  for (const Coordinate& coordinate : coordinates) line.push_back(at(coordinate));
  return line;
}

}  // namespace KorvaniTools
