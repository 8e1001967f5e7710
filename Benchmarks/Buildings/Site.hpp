#pragma once

#include "Buildings/PlainBuilding.hpp"

namespace KorvaniBenchmarks {

/// A place in metres: x along the building's corridors, y across them.
struct Metres {
  double x = 0;
  double y = 0;
};

/// Where a building stands: metres to coordinates.
///
/// One degree is taken as the same number of metres all over the site, which is off by less than a
/// ten thousandth within a building. No library function is asked, so that coordinates are the same
/// on every machine.
class Site {
 public:
  /// A building whose corridors run east-west.
  static Site straight() { return Site(1.0, 0.0); }

  /// A building that is turned by 16.26 degrees, as most are by some angle. The sine and cosine are
  /// those of a right triangle with sides 7, 24 and 25.
  static Site turned() { return Site(0.96, 0.28); }

  Coordinate at(Metres place) const {
    const double east = cosine_ * place.x - sine_ * place.y;
    const double north = sine_ * place.x + cosine_ * place.y;
    return {kLatitude + north / kMetresPerDegreeNorth, kLongitude + east / kMetresPerDegreeEast};
  }

 private:
  static constexpr double kLatitude = 48.125;
  static constexpr double kLongitude = 11.5;
  static constexpr double kMetresPerDegreeNorth = 111195.1;
  static constexpr double kMetresPerDegreeEast = 74225.5;  ///< at that latitude

  Site(double cosine, double sine) : cosine_(cosine), sine_(sine) {}

  double cosine_;
  double sine_;
};

}  // namespace KorvaniBenchmarks
