#pragma once

#include <limits>

#include "Platform/Location.hpp"

namespace KorvaniTools {

using Coordinate = KorvaniPlatform::CLLocationCoordinate2D;

/// A closed rectangle of latitudes and longitudes; empty until a coordinate is included.
/// Rectangles do not cross the 180th meridian.
struct Rectangle {
  static constexpr double kFar = std::numeric_limits<double>::infinity();

  Coordinate southWest{kFar, kFar};
  Coordinate northEast{-kFar, -kFar};

  /// Grows the rectangle just enough to hold `coordinate`.
  void include(Coordinate coordinate);

  /// Grows the rectangle just enough to hold all of `other`.
  void include(const Rectangle& other);

  /// Whether `coordinate` lies inside or on the border.
  bool contains(Coordinate coordinate) const;

  /// Whether the two share at least one coordinate, borders included.
  bool touches(const Rectangle& other) const;
};

}  // namespace KorvaniTools
