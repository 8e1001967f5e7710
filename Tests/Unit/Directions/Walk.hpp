#pragma once

/// Steps for direction tests, with headings that are exact to the last bit.
///
/// A route over real points has the bearings that trigonometry gives; a test of "exactly 15
/// degrees" needs the number itself. So a walk is written as legs, and its steps carry the
/// legs' headings as they are:
///
///     const auto steps = walk({{.distance = 8, .heading = 90}, {.distance = 3, .heading = 105}});
///
/// The points lie where such a walk leads from kOrigin. The first starts on level 0; a leg ends
/// on the level it names.

#include <cstdint>
#include <string>
#include <vector>

#include "Navigation/Directions/DirectionsHelpers.hpp"
#include "Navigation/Routing/Step.hpp"
#include "Support/Points.hpp"

namespace KorvaniTest {

struct Leg {
  double distance = 0;
  double heading = 0;
  std::int64_t level = 0;
  std::string type = "";
};

inline std::vector<KorvaniNavigation::Step> walk(const std::vector<Leg>& legs) {
  using KorvaniNavigation::DirectionsHelpers;
  using KorvaniNavigation::Step;
  std::vector<Step> steps;
  PointPtr start = at(kOrigin);
  for (const Leg& leg : legs) {
    const auto place =
        DirectionsHelpers::location(start->location(), leg.heading, leg.distance).coordinate();
    const PointPtr end = at(place, leg.level);
    steps.push_back(Step::withHeading(start, end, leg.distance, leg.heading, true, 1.0, leg.type));
    start = end;
  }
  return steps;
}

}  // namespace KorvaniTest
