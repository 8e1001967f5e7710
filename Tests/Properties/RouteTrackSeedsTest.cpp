// Somebody walks along seeded routes. What is left of the route, where positions lie on it and what
// is said about it are compared with the plain ways: steps copied one by one, the route's own graph
// with all that is said of positions on graphs, and instructions made of the steps alone.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Navigation/Directions/RouteInstructions.hpp"
#include "Navigation/Directions/TurnByTurnDirectionCalculator.hpp"
#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Localisation/RegionSearch.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"
#include "Navigation/Routing/RouteProgress.hpp"
#include "Navigation/Routing/RouteTrack.hpp"
#include "SeededNumbers.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/PlacedBuilding.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::asEdge;
using KorvaniNavigation::Directions;
using KorvaniNavigation::Intersection;
using KorvaniNavigation::IntersectionKind;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::PositionMapper;
using KorvaniNavigation::RouteInstructions;
using KorvaniNavigation::RouteTrack;
using KorvaniNavigation::Step;
using KorvaniNavigation::TrackPlace;
using KorvaniNavigation::TurnByTurnDirectionCalculator;

constexpr std::uint64_t kWalks = 4000;
constexpr int kPositions = 6;

// What a walk goes through, drawn from its seed.
class SeededWalk {
 public:
  explicit SeededWalk(std::uint64_t seed) : numbers_(seed), isRegular_(numbers_.chance(0.3)) {
    for (std::uint32_t wall = numbers_.below(12); wall > 0; --wall) addWall();
    const std::uint32_t count = 2 + numbers_.below(numbers_.chance(0.1) ? 60 : 14);
    while (points_.size() < count) addPoint();
  }

  const std::shared_ptr<KRVNavGraph>& building() const { return building_.graph(); }

  Route route() {
    std::vector<Step> steps;
    for (std::size_t i = 0; i + 1 < points_.size(); ++i) {
      const bool isStairs = points_[i]->level() != points_[i + 1]->level();
      const double distance = points_[i]->distanceFrom(*points_[i + 1]);
      steps.emplace_back(points_[i], points_[i + 1], numbers_.chance(0.1) ? 3.0 : distance, true,
                         1.0, isStairs ? "stairs of the north wing" : "");
    }
    return Route(std::move(steps));
  }

  // Mostly near the next points of the way, at times exactly on one.
  PointPtr position(const std::vector<Step>& left) {
    if (left.empty() || numbers_.chance(0.05)) return anywhere();
    const Step& step = left[numbers_.below(std::min<std::uint32_t>(
        static_cast<std::uint32_t>(left.size()), numbers_.chance(0.8) ? 2 : 60))];
    const CLLocationCoordinate2D a = step.start()->coordinate();
    const CLLocationCoordinate2D b = step.end()->coordinate();
    const double share = numbers_.chance(0.2) ? numbers_.below(3) / 2.0 : numbers_.unit();
    const double aside = numbers_.chance(0.5) ? 0 : (numbers_.unit() - 0.5) * 4e-5;
    const CLLocationCoordinate2D place{a.latitude + share * (b.latitude - a.latitude) + aside,
                                       a.longitude + share * (b.longitude - a.longitude) - aside};
    return at(place, numbers_.chance(0.9) ? step.end()->level() : level());
  }

 private:
  double metres() { return isRegular_ ? 4.0 * numbers_.below(6) : 24 * numbers_.unit(); }

  std::int64_t level() { return numbers_.below(3); }

  PointPtr anywhere() { return building_.position(metres(), metres(), level()); }

  void addWall() { building_.wall(metres(), metres(), metres(), metres(), level()); }

  void addPoint() {
    const bool stays = !points_.empty() && numbers_.chance(0.85);
    const std::int64_t level = stays ? points_.back()->level() : this->level();
    if (!points_.empty() && numbers_.chance(0.01)) {
      points_.push_back(points_[numbers_.below(static_cast<std::uint32_t>(points_.size()))]);
    } else if (numbers_.chance(0.15)) {
      points_.push_back(building_.position(metres(), metres(), level));
    } else {
      points_.push_back(building_.node(metres(), metres(), level));
    }
  }

  SeededNumbers numbers_;
  bool isRegular_;
  PlacedBuilding building_;
  std::vector<PointPtr> points_;
};

std::vector<Step> plainlyTrimmed(const std::vector<Step>& steps, const PointPtr& point) {
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (!liesOnStep(*point, steps[i])) continue;
    std::vector<Step> left(steps.begin() + static_cast<std::ptrdiff_t>(i), steps.end());
    left.front() =
        Step(point, steps[i].end(), steps[i].end()->distanceFrom(*point), steps[i].barrierFree(),
             steps[i].timeMultiplicator(), steps[i].neighborType());
    return left;
  }
  return {};
}

void expectSameSteps(const std::vector<Step>& actual, const std::vector<Step>& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < actual.size(); ++i) {
    EXPECT_EQ(actual[i].start(), expected[i].start());
    EXPECT_EQ(actual[i].end(), expected[i].end());
    EXPECT_EQ(actual[i].distance(), expected[i].distance());
    EXPECT_EQ(actual[i].heading(), expected[i].heading());
    EXPECT_EQ(actual[i].levelChange(), expected[i].levelChange());
    EXPECT_EQ(actual[i].neighborType(), expected[i].neighborType());
  }
}

void expectSameInstruction(const Directions& actual, const Directions& expected) {
  EXPECT_EQ(actual.type(), expected.type());
  EXPECT_EQ(actual.distance(), expected.distance());
  EXPECT_EQ(actual.levelChangeTypeName(), expected.levelChangeTypeName());
  EXPECT_EQ(actual.directionsJson(), expected.directionsJson());
}

class RouteTrackSeeds : public FacadeFixture {
 protected:
  /// Where a position lies on the route's own graph.
  static std::shared_ptr<Intersection> plainly(const RouteTrack& track, const KRVNavPoint& point) {
    const auto graph = track.graph();
    const auto region =
        regionFor(std::as_const(*graph).regions(), point.coordinate(), point.level());
    if (!region) return nullptr;
    PositionMapper mapper(bundle(), true);
    mapper.useWallsOf(region);
    const auto candidates = mapper.findClosestNodes(*region, point);
    return candidates.empty() ? nullptr : mapper.findIntersection(region, point, candidates, graph);
  }

  void expectSamePlace(const RouteTrack& track, const std::optional<TrackPlace>& place,
                       const std::shared_ptr<Intersection>& expected) {
    ASSERT_EQ(place.has_value(), expected != nullptr);
    if (!place) return;
    ++placedCount;
    EXPECT_EQ(place->kind, expected->kind());
    EXPECT_EQ(place->node->coordinate(), expected->node()->coordinate());
    EXPECT_EQ(place->node->level(), expected->node()->level());
    EXPECT_EQ(place->node->identifier(), expected->node()->identifier());
    EXPECT_EQ(place->distance, expected->distance());
    EXPECT_EQ(place->delta, expected->delta());
    expectSameIntersection(track, *place, expected);
  }

  static void expectSameIntersection(const RouteTrack& track, const TrackPlace& place,
                                     const std::shared_ptr<Intersection>& expected) {
    const auto intersection = track.intersectionAt(place);
    if (expected->kind() == IntersectionKind::node) {
      EXPECT_EQ(intersection->node(), expected->node());
      return;
    }
    EXPECT_EQ(intersection->node(), place.node);
    EXPECT_EQ(asEdge(intersection)->enclosingNodeOne(), asEdge(expected)->enclosingNodeOne());
    EXPECT_EQ(asEdge(intersection)->enclosingNodeTwo(), asEdge(expected)->enclosingNodeTwo());
  }

  void expectSameInstructions(const Route& route) {
    const auto actual = RouteInstructions::of(*route.remainingSteps());
    const auto expected = TurnByTurnDirectionCalculator().directionsForRoute(route.steps(), false);
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) expectSameInstruction(actual[i], expected[i]);
    instructionCount += actual.size();
  }

  /// Moves a point of the way a little, or to another level.
  static void moveAPoint(const Route& route, SeededNumbers& numbers) {
    const auto& point =
        route.points()[numbers.below(static_cast<std::uint32_t>(route.points().size()))];
    const CLLocationCoordinate2D place = point->coordinate();
    if (numbers.chance(0.2)) {
      point->setLevel(numbers.below(3));
    } else {
      point->setCoordinate({place.latitude + (numbers.unit() - 0.5) * 4e-5, place.longitude});
    }
    if (numbers.chance(0.3)) point->setLocation(KorvaniNavigation::CLLocation(place));
  }

  /// One position: the place on the track, the rest of the way, what is said about it.
  void walkTo(Route& route, const PointPtr& position) {
    const RouteTrack track(route.remainingSteps());
    const bool isPlaced = track.canPlace(*position);
    const auto place = isPlaced ? track.place(*position, bundle()) : std::nullopt;
    const auto expected = plainly(track, *position);
    if (isPlaced) {
      expectSamePlace(track, place, expected);
    } else {
      ++unplacedCount;
    }
    if (!expected) return;
    const auto left = plainlyTrimmed(route.steps(), expected->node());
    EXPECT_EQ(trimRoute(route, expected->node()), !left.empty());
    expectSameSteps(route.steps(), left);
    expectSameInstructions(route);
  }

  std::size_t placedCount = 0;
  std::size_t unplacedCount = 0;
  std::size_t instructionCount = 0;
};

TEST_F(RouteTrackSeeds, AgreeWithThePlainWaysAtEveryPosition) {
  for (std::uint64_t seed = 0; seed < kWalks && !HasFailure(); ++seed) {
    SCOPED_TRACE("walk " + std::to_string(seed));
    config().setLevelHeight(seed % 2 == 0 ? 3 : 0);
    SeededWalk walk(seed);
    navigation().provideGraph(walk.building());
    Route route = walk.route();
    SeededNumbers moves(seed + 1);
    expectSameInstructions(route);
    for (int i = 0; i < kPositions && !HasFailure(); ++i) {
      walkTo(route, walk.position(route.steps()));
      if (moves.chance(0.2)) moveAPoint(route, moves);
    }
  }
  // That the comparison is one: most positions are placed without a graph, and some cannot be.
  EXPECT_GT(placedCount, 2 * kWalks);
  EXPECT_GT(unplacedCount, 0U);
  EXPECT_GT(instructionCount, 10 * kWalks);
}

}  // namespace
}  // namespace KorvaniTest
