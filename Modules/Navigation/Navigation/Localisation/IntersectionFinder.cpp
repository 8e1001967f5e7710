#include "Navigation/Localisation/IntersectionFinder.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Common/KorvaniCommonHelpers.hpp"
#include "Platform/Location.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::greatCircleDistance;

namespace {

constexpr double kBetweenToleranceFactor = 0.001;
constexpr double kBetweenToleranceMetres = 0.5;
constexpr double kSameCornerDegrees = 0.000004;
constexpr double kSameDirectionDegrees = 4.0;

struct Box {
  CLLocationCoordinate2D southWest;
  CLLocationCoordinate2D northEast;
};

Box boxOf(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  return {{std::min(a.latitude, b.latitude), std::min(a.longitude, b.longitude)},
          {std::max(a.latitude, b.latitude), std::max(a.longitude, b.longitude)}};
}

bool isSameCorner(CLLocationCoordinate2D a, CLLocationCoordinate2D b) {
  if (a == b) return true;
  return std::abs(a.latitude - b.latitude) < kSameCornerDegrees &&
         std::abs(a.longitude - b.longitude) < kSameCornerDegrees;
}

double diagonalBearing(const Box& box) {
  return KorvaniCommon::initialBearing(box.southWest, box.northEast);
}

}  // namespace

IntersectionFinder::IntersectionFinder(std::shared_ptr<RegionFinder> regionFinder,
                                       std::weak_ptr<ConfigDependents> configDependents)
    : regionFinder_(std::move(regionFinder)), configDependents_(std::move(configDependents)) {}

IntersectionFinder::~IntersectionFinder() = default;

std::shared_ptr<ObstacleDetector> IntersectionFinder::obstacleDetector() const {
  return obstacleDetector_.load();
}

void IntersectionFinder::setObstacleDetector(std::shared_ptr<ObstacleDetector> obstacleDetector) {
  obstacleDetector_.store(std::move(obstacleDetector));
}

MKMapPoint IntersectionFinder::findIntersectionPointForPointOnLine(MKMapPoint point,
                                                                   MKMapPoint lineStart,
                                                                   MKMapPoint lineEnd) {
  const double dx = lineEnd.x - lineStart.x;
  const double dy = lineEnd.y - lineStart.y;
  const double c = lineStart.y * lineEnd.x - lineStart.x * lineEnd.y;
  const double n = dx * dx + dy * dy;
  const double x = ((-dx * point.x - dy * point.y) * (-dx) - dy * c) / n;
  const double y = (dy * (dx * point.x + dy * point.y) + c * dx) / n;
  return MKMapPoint{x, y};
}

bool IntersectionFinder::coordinateIsBetweenCoordinates(
    CLLocationCoordinate2D coordinate, CLLocationCoordinate2D segmentStartCoordinate,
    CLLocationCoordinate2D segmentEndCoordinate) {
  const double toStart = greatCircleDistance(coordinate, segmentStartCoordinate);
  const double toEnd = greatCircleDistance(coordinate, segmentEndCoordinate);
  const double length = greatCircleDistance(segmentStartCoordinate, segmentEndCoordinate);
  const double tolerance = std::min(length * kBetweenToleranceFactor, kBetweenToleranceMetres);
  return std::abs(length - (toStart + toEnd)) < tolerance;
}

bool IntersectionFinder::checkIfLineBetweenCoordinate(CLLocationCoordinate2D a,
                                                      CLLocationCoordinate2D andCoordinate,
                                                      CLLocationCoordinate2D liesOnLineBetween,
                                                      CLLocationCoordinate2D andCoordiante) {
  const CLLocationCoordinate2D b = andCoordinate;
  const CLLocationCoordinate2D c = liesOnLineBetween;
  const CLLocationCoordinate2D d = andCoordiante;
  const Box first = boxOf(a, b);
  const Box second = boxOf(c, d);
  if (isSameCorner(first.southWest, second.southWest) &&
      isSameCorner(first.northEast, second.northEast)) {
    return true;
  }
  // A plain difference: both diagonals point north-east (of boxes narrower than half the world).
  if (std::abs(diagonalBearing(first) - diagonalBearing(second)) > kSameDirectionDegrees) {
    return false;
  }
  const auto secondEndOverlaps = [&] {
    return coordinateIsBetweenCoordinates(d, a, b) || coordinateIsBetweenCoordinates(b, c, d);
  };
  if (coordinateIsBetweenCoordinates(c, a, b) && secondEndOverlaps()) return true;
  return coordinateIsBetweenCoordinates(a, c, d) && secondEndOverlaps();
}

}  // namespace KorvaniNavigation
