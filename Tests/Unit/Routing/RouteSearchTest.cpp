#include "Navigation/Routing/RouteSearch.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "Navigation/Localisation/EdgeIntersection.hpp"
#include "Navigation/Localisation/PositionMapper.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Platform/ManualClock.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/PlacedBuilding.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniNavigation;
using namespace std::chrono_literals;
using Points = std::vector<PointPtr>;

TEST(SearchStart, IsTheNodeOfAPersonOnANode) {
  const auto node = at(48, 11, 0, 1);
  const auto start = searchStartOf(std::make_shared<SingleNodeIntersection>(node, 2.5, 0.1));
  EXPECT_EQ(start.nodes, Points{node});
  EXPECT_EQ(start.distances, std::vector<double>{2.5});
}

TEST(SearchStart, IsBothEndsOfTheEdgeOfAPersonOnAnEdge) {
  const auto one = at(48, 11, 0, 1);
  const auto two = at(fromOrigin(0, 10), 0, 2);
  const auto place = std::make_shared<EdgeIntersection>(0.1, 2.5, at(fromOrigin(0, 4)), one, two);
  const auto start = searchStartOf(place);
  EXPECT_EQ(start.nodes, (Points{one, two}));
  EXPECT_EQ(start.distances, (std::vector<double>{place->distanceEnclosingNodeOne(),
                                                  place->distanceEnclosingNodeTwo()}));
  EXPECT_NEAR(start.distances[0], 4, 1e-4);
  EXPECT_NEAR(start.distances[1], 6, 1e-4);
}

// The nodes near the destinations.

class DestinationNodes : public FacadeFixture {
 protected:
  Points nodesNear(const Points& destinations, DestinationWalls walls = DestinationWalls::held) {
    provide(building.graph());
    if (!mapper.obstacleDetector()) mapper.useWallsOf(building.region(0));
    return destinationNodes(destinations, bundle(), mapper, walls);
  }

  PlacedBuilding building;
  PositionMapper mapper{bundle(), true};
};

using DestinationNodesDeathTest = DestinationNodes;

TEST_F(DestinationNodes, AreThoseNearEachDestinationInOrder) {
  const auto a = building.node(0, 0);
  const auto b = building.node(0, 40);
  const auto c = building.node(40, 0);
  EXPECT_EQ(nodesNear({building.position(39, 1), building.position(1, 0)}), (Points{c, a}));
  EXPECT_EQ(nodesNear({building.position(0, 41)}), Points{b});
}

TEST_F(DestinationNodes, AreAtMostFourForEachDestination) {
  const Points near{building.node(5, 0), building.node(0, 5.1), building.node(-5.2, 0),
                    building.node(0, -5.3), building.node(3.9, 3.9)};
  EXPECT_EQ(nodesNear({building.position(0, 0)}), (Points{near.begin(), near.begin() + 4}));
  EXPECT_EQ(nodesNear({building.position(0, 0), building.position(0, 0)}).size(), 8U);
}

TEST_F(DestinationNodes, MayBeThereTwice) {
  const auto a = building.node(0, 0);
  EXPECT_EQ(nodesNear({building.position(1, 0), building.position(-1, 0)}), (Points{a, a}));
}

TEST_F(DestinationNodes, AreOfTheDestinationsLevel) {
  building.node(0, 0, 0);
  const auto above = building.node(0, 5, 1);
  EXPECT_EQ(nodesNear({building.position(0, 0, 1)}), Points{above});
}

TEST_F(DestinationNodes, AreOfTheNearestRegionForADestinationOutsideAll) {
  const auto a = building.node(0, 0, 0);
  EXPECT_EQ(nodesNear({building.position(3000, 0, 0)}), Points{a});
  EXPECT_EQ(nodesNear({building.position(0, 1, 4)}), Points{a});
}

TEST_F(DestinationNodes, AreNoneForNoDestinations) {
  building.node(0, 0);
  EXPECT_TRUE(nodesNear({}).empty());
}

TEST_F(DestinationNodes, AreTestedAgainstTheWallsHeldOrThoseOfTheDestinationsOwnRegion) {
  const auto above = building.node(0, 5, 1);
  const auto aboveAndHidden = building.node(0, -4, 1);
  building.wall(-1, 3, 1, 3, 0);
  building.wall(-1, -3, 1, -3, 1);
  const Points destination{building.position(0, 0, 1)};
  EXPECT_EQ(nodesNear(destination, DestinationWalls::held), Points{aboveAndHidden});
  EXPECT_EQ(nodesNear(destination, DestinationWalls::own), Points{above});
}

TEST_F(DestinationNodes, LeaveTheWallsThatWereHeldInPlace) {
  building.node(0, 5, 1);
  building.wall(-1, 3, 1, 3, 0);
  mapper.useWallsOf(building.region(0));
  const auto held = mapper.obstacleDetector();
  for (const auto walls : {DestinationWalls::held, DestinationWalls::own}) {
    nodesNear({building.position(0, 0, 1)}, walls);
    EXPECT_EQ(mapper.obstacleDetector(), held);
  }
}

TEST_F(DestinationNodes, AreNoneWhileNoWallsAreHeldUnlessTheDestinationsOwnCount) {
  const auto a = building.node(0, 0);
  provide(building.graph());
  const Points destination{building.position(1, 0)};
  EXPECT_TRUE(destinationNodes(destination, bundle(), mapper, DestinationWalls::held).empty());
  EXPECT_EQ(destinationNodes(destination, bundle(), mapper, DestinationWalls::own), Points{a});
  EXPECT_EQ(mapper.obstacleDetector(), nullptr);
}

TEST_F(DestinationNodesDeathTest, NeedARegionForEveryDestination) {
  provide(std::make_shared<KRVNavGraph>());
  EXPECT_DEATH(destinationNodes({at(kOrigin)}, bundle(), mapper, DestinationWalls::held),
               "fatal error: .*region");
}

TEST_F(DestinationNodesDeathTest, NeedTheConfiguration) {
  EXPECT_DEATH(destinationNodes({at(kOrigin)}, {}, mapper, DestinationWalls::held),
               "fatal error: .*configuration");
}

// The time limit.

class SearchTimeLimitTest : public FacadeFixture {
 protected:
  SearchTimeLimitTest() { KorvaniPlatform::setClock(time); }

  void TearDown() override {
    KorvaniPlatform::setClock(nullptr);
    FacadeFixture::TearDown();
  }

  std::shared_ptr<SearchTimeLimit> arm() {
    return SearchTimeLimit::arm([this] { ++expiries; });
  }

  void pass(KorvaniPlatform::Duration duration) {
    time->advance(duration);
    pump();
  }

  std::shared_ptr<KorvaniPlatform::ManualClock> time =
      std::make_shared<KorvaniPlatform::ManualClock>();
  int expiries = 0;
};

TEST_F(SearchTimeLimitTest, ExpiresOnceAfterTenSeconds) {
  const auto limit = arm();
  pump();
  EXPECT_EQ(expiries, 0);
  pass(9999ms);
  EXPECT_EQ(expiries, 0);
  pass(1ms);
  EXPECT_EQ(expiries, 1);
  pass(60s);
  EXPECT_EQ(expiries, 1);
}

TEST_F(SearchTimeLimitTest, CountsFromWhenTheMainQueueMakesTheTimer) {
  const auto limit = arm();
  time->advance(9s);
  pump();
  pass(9s);
  EXPECT_EQ(expiries, 0);
  pass(1s);
  EXPECT_EQ(expiries, 1);
}

TEST_F(SearchTimeLimitTest, DoesNothingWhenItIsInvalidatedBeforeItsTimerIsMade) {
  const auto limit = arm();
  limit->invalidate();
  pump();
  pass(60s);
  EXPECT_EQ(expiries, 0);
}

TEST_F(SearchTimeLimitTest, DoesNothingWhenItIsInvalidatedInTime) {
  const auto limit = arm();
  pump();
  pass(9999ms);
  limit->invalidate();
  limit->invalidate();
  pass(60s);
  EXPECT_EQ(expiries, 0);
}

TEST_F(SearchTimeLimitTest, MayBeInvalidatedAfterItExpired) {
  const auto limit = arm();
  pump();
  pass(10s);
  limit->invalidate();
  pass(60s);
  EXPECT_EQ(expiries, 1);
}

TEST_F(SearchTimeLimitTest, DoesNothingOnceNobodyHoldsIt) {
  arm();
  pump();
  pass(60s);
  EXPECT_EQ(expiries, 0);
}

TEST_F(SearchTimeLimitTest, DoesNotHinderALaterOne) {
  const auto first = arm();
  pump();
  pass(5s);
  first->invalidate();
  const auto second = arm();
  pump();
  pass(5s);
  EXPECT_EQ(expiries, 0);
  pass(5s);
  EXPECT_EQ(expiries, 1);
}

TEST_F(SearchTimeLimitTest, ExpiresOnTheMainThreadThoughAnotherThreadArmedIt) {
  std::thread::id where;
  std::shared_ptr<SearchTimeLimit> limit;
  std::thread([&] {
    limit = SearchTimeLimit::arm([&] { where = std::this_thread::get_id(); });
  }).join();
  pump();
  pass(10s);
  EXPECT_EQ(where, std::this_thread::get_id());
}

TEST_F(SearchTimeLimitTest, DoesNothingAnyMoreOnceAnotherThreadHasInvalidatedIt) {
  for (int i = 0; i < 300; ++i) {
    std::atomic<bool> ended{false};
    std::atomic<bool> late{false};
    const auto limit = SearchTimeLimit::arm([&] { late = ended.load(); });
    // Every other one is invalidated while its timer is made, the rest while it fires.
    if (i % 2 == 0) {
      pump();
      time->advance(10s);
    }
    std::atomic<bool> go{false};
    std::thread search([&] {
      while (!go) std::this_thread::yield();
      limit->invalidate();
      ended = true;
    });
    go = true;
    pump();
    time->advance(10s);
    pump();
    search.join();
    pump();
    ASSERT_FALSE(late);
  }
}

}  // namespace
}  // namespace KorvaniTest
