// What holds for every route, place and heading: instructions, bearings and projections.

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "Navigation/Directions/AngleDifference.hpp"
#include "Navigation/Directions/DirectionsHelpers.hpp"
#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Localisation/IntersectionFinder.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Platform/Location.hpp"
#include "Platform/MapPoint.hpp"
#include "Support/Points.hpp"

namespace {

using namespace KorvaniNavigation;
using KorvaniTest::at;
using KorvaniTest::fromOrigin;
using KorvaniTest::PointPtr;

// A number in [from, to], in steps that leave room for ties and round values.
double number(double from, double to) {
  constexpr int kParts = 1 << 20;
  const int part = *rc::gen::inRange(0, kParts + 1);
  return from + (to - from) * part / kParts;
}

CLLocationCoordinate2D anyCoordinate() { return {number(-80, 80), number(-180, 180)}; }

// Headings often repeat and often differ by exactly a threshold, as drawn corridors do.
double anyHeading() {
  return *rc::gen::oneOf(rc::gen::map(rc::gen::inRange(0, 24), [](int i) { return i * 15.0; }),
                         rc::gen::map(rc::gen::inRange(0, 36), [](int i) { return i * 10.0; }),
                         rc::gen::map(rc::gen::inRange(0, 36000), [](int i) { return i / 100.0; }));
}

Step anyStep(const PointPtr& start) {
  const double distance = *rc::gen::inRange(0, 80) / 4.0;
  const double heading = anyHeading();
  const bool changesLevel = *rc::gen::weightedElement<bool>({{5, false}, {1, true}});
  const std::int64_t level = start->level() + (changesLevel ? *rc::gen::element(-2, -1, 1, 2) : 0);
  const auto place = DirectionsHelpers::location(start->location(), heading, distance);
  const PointPtr end = at(place.coordinate(), level);
  const double multiplicator = *rc::gen::element(0.5, 1.0, 2.0);
  const std::string type = changesLevel ? "stairs" : "";
  return Step::withHeading(start, end, distance, heading, true, multiplicator, type);
}

std::vector<Step> anySteps(int atLeast) {
  std::vector<Step> steps;
  PointPtr start = at(KorvaniTest::kOrigin);
  for (int left = *rc::gen::inRange(atLeast, 25); left > 0; --left) {
    steps.push_back(anyStep(start));
    start = steps.back().end();
  }
  return steps;
}

bool isSame(const Step& a, const Step& b) {
  return a.start() == b.start() && a.end() == b.end() && a.distance() == b.distance();
}

const TurnByTurnDirectionCalculator& calculator() {
  static const TurnByTurnDirectionCalculator shared;
  return shared;
}

// The length a walker hears of: each segment's, told by the instruction at its end or before it.
double lengthOf(const std::vector<StraightSegment>& segments) {
  double metres = 0;
  for (const StraightSegment& segment : segments) metres += segment.distance;
  return metres;
}

}  // namespace

RC_GTEST_PROP(PropertiesDirections, EveryInstructionListEndsWithTheDestination, ()) {
  const auto list = calculator().directionsForRoute(anySteps(1), false);
  RC_ASSERT(!list.empty());
  for (std::size_t i = 0; i < list.size(); ++i) {
    const bool isLast = i + 1 == list.size();
    RC_ASSERT((list[i].type() == DirectionsType::destination) == isLast);
    RC_ASSERT(list[i].type() != DirectionsType::turnaround);
    RC_ASSERT(list[i].type() != DirectionsType::unknown);
  }
}

RC_GTEST_PROP(PropertiesDirections, AForwardInstructionIsLongAndFollowedByATurn, ()) {
  const auto list = calculator().directionsForRoute(anySteps(1), false);
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (list[i].type() != DirectionsType::forward) continue;
    RC_ASSERT(list[i].distance() > kKRVNavigationStraightAheadDirectionDistanceThreshold);
    const auto next = list.at(i + 1).type();
    RC_ASSERT(next == DirectionsType::left || next == DirectionsType::right ||
              next == DirectionsType::bearLeft || next == DirectionsType::bearRight);
  }
}

RC_GTEST_PROP(PropertiesDirections, SegmentsPartitionTheSteps, ()) {
  const auto steps = anySteps(0);
  const auto segments = calculator().findAllStraightSegments(steps);
  std::size_t next = 0;
  for (const StraightSegment& segment : segments) {
    RC_ASSERT(segment.startIndex == next);
    RC_ASSERT(!segment.intermediateSteps.empty());
    for (const Step& step : segment.intermediateSteps) RC_ASSERT(isSame(step, steps.at(next++)));
    RC_ASSERT(segment.nextStep.has_value() == (next < steps.size()));
    RC_ASSERT(segment.nextStep.has_value() == segment.neighbourType.has_value());
    if (segment.nextStep) RC_ASSERT(isSame(*segment.nextStep, steps[next]));
  }
  RC_ASSERT(next == steps.size());
  RC_ASSERT(std::abs(lengthOf(segments) - Route(steps).totalDistance()) < 1e-9);
}

RC_GTEST_PROP(PropertiesDirections, AllStepsOfASegmentGoStraightOnOneLevel, ()) {
  for (const auto& segment : calculator().findAllStraightSegments(anySteps(1))) {
    const auto level = segment.intermediateSteps.front().end()->level();
    for (const Step& step : segment.intermediateSteps) {
      RC_ASSERT(step.end()->level() == level);
      RC_ASSERT(absoluteAngleDifference(segment.bearing, step.heading()) <=
                kKRVNavigationTurnDirectionDegreesThreshold);
    }
  }
}

RC_GTEST_PROP(PropertiesDirections, SegmentsEndOnlyWhereTheyMust, ()) {
  for (const auto& segment : calculator().findAllStraightSegments(anySteps(1))) {
    if (!segment.nextStep) continue;
    const bool turns = absoluteAngleDifference(segment.bearing, segment.nextStep->heading()) >
                       kKRVNavigationTurnDirectionDegreesThreshold;
    RC_ASSERT(turns || segment.levelChangeDirection != DirectionsType::unknown);
  }
}

RC_GTEST_PROP(PropertiesDirections, WhatRemainsOfANewRouteIsAllOfIt, ()) {
  const Route route(anySteps(0));
  RC_ASSERT(route.remainingDistance() == route.totalDistance());
  RC_ASSERT(route.remainingTravelTime() == route.travelTime());
  RC_ASSERT(route.points().size() == (route.steps().empty() ? 0 : route.steps().size() + 1));
}

RC_GTEST_PROP(PropertiesDirections, AngleDifferencesLeadFromTheBearingToTheReference, ()) {
  const double reference = anyHeading();
  const double bearing = anyHeading();
  const double difference = signedAngleDifference(reference, bearing);
  RC_ASSERT(difference >= -180 && difference <= 180);
  RC_ASSERT(std::abs(std::remainder(bearing + difference - reference, 360)) < 1e-9);
  if (std::abs(difference) < 180) {
    RC_ASSERT(std::abs(difference + signedAngleDifference(bearing, reference)) < 1e-9);
  }
}

RC_GTEST_PROP(PropertiesDirections, BearingsLieInTheHalfOpenTurn, ()) {
  const double bearing = DirectionsHelpers::bearingToLocation(CLLocation(anyCoordinate()),
                                                              CLLocation(anyCoordinate()));
  RC_ASSERT(bearing >= 0 && bearing < 360);
}

RC_GTEST_PROP(PropertiesDirections, BearingAndDistanceLeadToThePlaceTheyWereTakenFrom, ()) {
  const CLLocation from(anyCoordinate());
  const CLLocation to(anyCoordinate());
  const double distance = from.distanceFromLocation(to);
  // Antipodes have every bearing, and haversines lose their digits there.
  RC_PRE(distance < 19'000'000);
  const double bearing = DirectionsHelpers::bearingToLocation(to, from);
  const CLLocation reached = DirectionsHelpers::location(from, bearing, distance);
  RC_ASSERT(reached.distanceFromLocation(to) < 1e-3);
}

RC_GTEST_PROP(PropertiesDirections, ThePlaceReachedLiesAtTheDistanceAlongTheBearing, ()) {
  const CLLocation from(anyCoordinate());
  const double bearing = number(0, 359.999);
  const double distance = number(1, 100'000);
  const CLLocation reached = DirectionsHelpers::location(from, bearing, distance);
  RC_ASSERT(std::abs(from.distanceFromLocation(reached) - distance) < 1e-4);
  const double seen = DirectionsHelpers::bearingToLocation(reached, from);
  RC_ASSERT(std::abs(std::remainder(seen - bearing, 360)) < 1e-4);
}

RC_GTEST_PROP(PropertiesDirections, ProjectionInverts, ()) {
  const CLLocationCoordinate2D coordinate = anyCoordinate();
  const auto back = MKCoordinateForMapPoint(MKMapPointForCoordinate(coordinate));
  RC_ASSERT(std::abs(back.latitude - coordinate.latitude) < 1e-9);
  RC_ASSERT(std::abs(back.longitude - coordinate.longitude) < 1e-9);
}

RC_GTEST_PROP(PropertiesDirections, TheFootOfAPerpendicularIsTheNearestPlaceOnTheLine, ()) {
  const MKMapPoint point{number(0, 1000), number(0, 1000)};
  const MKMapPoint start{number(0, 1000), number(0, 1000)};
  const MKMapPoint end{number(0, 1000), number(0, 1000)};
  const double dx = end.x - start.x;
  const double dy = end.y - start.y;
  RC_PRE(std::hypot(dx, dy) > 1);
  const MKMapPoint foot =
      IntersectionFinder::findIntersectionPointForPointOnLine(point, start, end);
  const double length = std::hypot(dx, dy);
  RC_ASSERT(std::abs((foot.x - start.x) * dy - (foot.y - start.y) * dx) / length < 1e-5);
  RC_ASSERT(std::abs((point.x - foot.x) * dx + (point.y - foot.y) * dy) / length < 1e-5);
}

RC_GTEST_PROP(PropertiesDirections, AWallBlocksBothWaysOrNeither, ()) {
  const auto place = [] { return fromOrigin(number(0, 100), number(0, 100)); };
  const auto wall = std::make_shared<KRVNavObstacle>(
      std::vector<CLLocationCoordinate2D>{place(), place(), place()});
  const ObstacleDetector detector({wall}, {});
  const auto a = place();
  const auto b = place();
  const bool blocked = detector.isAnyBarrierInBetween(a, b);
  RC_ASSERT(blocked == detector.isAnyBarrierInBetween(b, a));
  RC_ASSERT(blocked == !detector.detectBarriersBetween(a, b).empty());
  RC_ASSERT(blocked == detector.barrierIsInBetween(*wall, a, b));
}
