#include "Navigation/Directions/AngleDifference.hpp"

#include <cmath>

namespace KorvaniNavigation {

double signedAngleDifference(double reference, double bearing) {
  const double difference = reference - bearing;
  const double size = std::abs(difference);
  if (size == 180.0) return 180.0;
  if (size <= 180.0) return difference;
  return reference <= bearing ? 360.0 - size : size - 360.0;
}

double absoluteAngleDifference(double reference, double bearing) {
  return std::abs(signedAngleDifference(reference, bearing));
}

}  // namespace KorvaniNavigation
