#pragma once

#include "Platform/Location.hpp"

/// The Earth as every module of the SDK sees it: one sphere, one radius.
///
/// Example: an arc of one radian is as long as the radius:
///
///     double metres = angleInRadians * KorvaniCommon::kKRV_EARTH_RADIUS;
namespace KorvaniCommon {

/// Radius of the Earth, metres. It is the platform's own radius, so that distances measured
/// between locations and distances computed from angles agree to the last bit.
/// Source: mean radius R1 of the International Union of Geodesy and Geophysics.
inline constexpr double kKRV_EARTH_RADIUS = KorvaniPlatform::kEarthRadius;

}  // namespace KorvaniCommon
