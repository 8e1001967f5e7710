#pragma once

// Internal. How far one heading lies from another, across north.

namespace KorvaniNavigation {

/// Degrees from `bearing` to `reference`, both in [0, 360), the short way round.
///
/// The result lies in [-180, 180]. It is positive when `bearing` lies counter-clockwise of
/// `reference` (to its left), negative when it lies clockwise (to its right); 350 against 10
/// is -20 and 10 against 350 is 20. Exactly opposite headings give +180 whichever comes first.
double signedAngleDifference(double reference, double bearing);

/// Size of `signedAngleDifference`, in [0, 180].
double absoluteAngleDifference(double reference, double bearing);

}  // namespace KorvaniNavigation
