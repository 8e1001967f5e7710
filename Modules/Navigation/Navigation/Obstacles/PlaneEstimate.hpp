#pragma once

// Internal. Where coordinates near some place lie on the map plane: roughly, but with a known
// error, and without the sine and the logarithm of `MKMapPointForCoordinate`, which take longer
// than most of what is asked about the point.
//
//   const PlaneEstimate estimate(low, high);      // for what lies around that rectangle
//   if (estimate.covers(coordinate)) ...          // false for what is not a number
//     estimate.at(coordinate);                    // each of x and y within estimate.error()
//
// On the map plane x is linear in the longitude, and y = W / 2 - W / (2 pi) * g(latitude), where g
// is the integral of the secant. With s = 1 / cos(latitude) and t = tan(latitude) its derivatives
// are s, s t, s (2 t^2 + 1) and s t (6 t^2 + 5). The estimate takes the first three at the latitude
// in the middle; by Taylor's theorem y is wrong by the fourth, at the latitude farthest from the
// equator, times the fourth power of the distance over 24 at most. That is less than the roundings
// of the formula itself for a building, and a micrometre for a town.
//
// The error also holds the roundings of both, the estimate and the formula: each step of either is
// wrong by 2^-53 of its value at most, a sine or logarithm by twice that, and what is lost in
// 1 - sin(latitude) near the poles grows with s^2.
//
// Immutable: any number of threads may ask.

#include <cmath>

#include "Platform/MapPoint.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::CLLocationCoordinate2D;
using KorvaniPlatform::MKMapPoint;

class PlaneEstimate {
 public:
  // Covers nothing.
  PlaneEstimate() = default;

  // Covers what lies between the corners, of which `low` has the lesser x and y, or a little less.
  // Nothing when that is not on the map of the world.
  PlaneEstimate(MKMapPoint low, MKMapPoint high);

  bool covers(CLLocationCoordinate2D coordinate) const {
    return std::abs(coordinate.latitude - middle_.latitude) <= reach_.latitude &&
           std::abs(coordinate.longitude - middle_.longitude) <= reach_.longitude;
  }

  // For a coordinate that it covers.
  MKMapPoint at(CLLocationCoordinate2D coordinate) const {
    const double east = coordinate.longitude - middle_.longitude;
    const double north = coordinate.latitude - middle_.latitude;
    return {origin_.x + east * xPerDegree_,
            origin_.y + north * (yPerDegree_ + north * (ySquare_ + north * yCube_))};
  }

  // How far x and y may be wrong at most, in units of the plane.
  double error() const { return error_; }

 private:
  double errorWithin(double extent) const;

  CLLocationCoordinate2D middle_;
  CLLocationCoordinate2D reach_{-1, -1};  // degrees to both sides
  MKMapPoint origin_;                     // the place of the middle
  double xPerDegree_ = 0;
  double yPerDegree_ = 0;
  double ySquare_ = 0;
  double yCube_ = 0;
  double error_ = 0;
};

}  // namespace KorvaniNavigation
