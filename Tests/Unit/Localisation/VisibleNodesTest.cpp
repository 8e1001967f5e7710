#include "Navigation/Localisation/VisibleNodes.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "Support/Points.hpp"

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::NodeTree;
using KorvaniNavigation::visibleNodes;
using KorvaniNavigation::WallEdge;
using KorvaniNavigation::WallGrid;
using KorvaniPlatform::MKMapPointForCoordinate;
using KorvaniTest::fromOrigin;
using KorvaniTest::kNotANumber;

namespace {

using Places = std::vector<CLLocationCoordinate2D>;
using Numbers = std::vector<std::uint32_t>;

constexpr double kInfinite = std::numeric_limits<double>::infinity();

// Edges from place to place.
WallGrid wallAlong(const Places& corners) {
  std::vector<WallEdge> edges;
  for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
    edges.push_back(
        {MKMapPointForCoordinate(corners[i]), MKMapPointForCoordinate(corners[i + 1]), 0});
  }
  return WallGrid(edges);
}

Numbers visibleFrom(CLLocationCoordinate2D position, const Places& nodes, const Places& wall = {}) {
  return visibleNodes(NodeTree(nodes), wallAlong(wall), position);
}

// 1 m apart, around the origin, without those nearer than 2 m.
Places widelyAround() {
  Places places;
  for (int north = -60; north <= 60; ++north) {
    for (int east = -60; east <= 60; ++east) {
      if (std::hypot(north, east) >= 2) places.push_back(fromOrigin(north, east));
    }
  }
  return places;
}

}  // namespace

TEST(VisibleNodes, AreNoneWithoutNodes) { EXPECT_TRUE(visibleFrom(fromOrigin(0, 0), {}).empty()); }

TEST(VisibleNodes, AreListedNearestFirst) {
  const Places nodes{fromOrigin(2, 0), fromOrigin(0, 1), fromOrigin(-1.5, 0)};
  EXPECT_EQ(visibleFrom(fromOrigin(0, 0), nodes), (Numbers{1, 2, 0}));
}

TEST(VisibleNodes, OfOneDistanceAreListedInTheOrderOfInsertion) {
  Places nodes;
  for (int i = 0; i < 50; ++i) nodes.push_back({i % 2 == 0 ? 1.0 : -1.0, 0});
  Numbers all(50);
  for (std::uint32_t i = 0; i < 50; ++i) all[i] = i;
  EXPECT_EQ(visibleFrom({0, 0}, nodes), all);
}

TEST(VisibleNodes, ReachTwoAndAHalfTimesAsFarAsTheNearest) {
  EXPECT_EQ(visibleFrom({0, 0}, {{0, 2}, {5, 0}, {0, 5.000001}}), (Numbers{0, 1}));
}

TEST(VisibleNodes, AtThePositionItselfLeaveNoneBesidesThem) {
  EXPECT_EQ(visibleFrom({1, 1}, {{1, 1}, {1, 1.000001}, {1, 1}}), (Numbers{0, 2}));
}

TEST(VisibleNodes, AreNotThoseBehindAWall) {
  const Places nodes{fromOrigin(0, 2), fromOrigin(0, -3), fromOrigin(0, 4)};
  const Places wall{fromOrigin(-5, 1), fromOrigin(5, 1)};
  EXPECT_EQ(visibleFrom(fromOrigin(0, 0), nodes, wall), (Numbers{1}));
}

TEST(VisibleNodes, BehindAWallDoNotCountAsTheNearest) {
  const Places nodes{fromOrigin(0, 2), fromOrigin(0, -30), fromOrigin(-60, 0), fromOrigin(0, -76)};
  const Places wall{fromOrigin(-5, 1), fromOrigin(5, 1)};
  EXPECT_EQ(visibleFrom(fromOrigin(0, 0), nodes, wall), (Numbers{1, 2}));
}

TEST(VisibleNodes, AreNotThoseOnAWall) {
  const Places nodes{fromOrigin(-5, 1), fromOrigin(5, 1), fromOrigin(0, -2)};
  const Places wall{fromOrigin(-5, 1), fromOrigin(5, 1)};
  EXPECT_EQ(visibleFrom(fromOrigin(0, 0), nodes, wall), (Numbers{2}));
}

TEST(VisibleNodes, AreNoneFromAClosedRoom) {
  const Places room{fromOrigin(1, -1), fromOrigin(1, 1), fromOrigin(-1, 1), fromOrigin(-1, -1),
                    fromOrigin(1, -1)};
  EXPECT_TRUE(visibleFrom(fromOrigin(0, 0), widelyAround(), room).empty());
  EXPECT_TRUE(visibleFrom(fromOrigin(0.9, -0.3), widelyAround(), room).empty());
}

TEST(VisibleNodes, AreNoneFromAWallOrItsEndButForThoseAlongIt) {
  const Places wall{fromOrigin(0, 0), fromOrigin(0, 4)};
  Places nodes = widelyAround();
  nodes.push_back(fromOrigin(0, -7.5));
  for (const auto position : {wall[0], wall[1]}) {
    for (const std::uint32_t index : visibleFrom(position, nodes, wall)) {
      EXPECT_EQ(nodes[index].latitude, position.latitude);
    }
  }
}

TEST(VisibleNodes, AreSeenThroughAGap) {
  const Places room{fromOrigin(1, 0.2), fromOrigin(1, 1),  fromOrigin(-1, 1),
                    fromOrigin(-1, -1), fromOrigin(1, -1), fromOrigin(1, -0.2)};
  const Places nodes = widelyAround();
  const Numbers visible = visibleFrom(fromOrigin(0, 0), nodes, room);
  ASSERT_FALSE(visible.empty());
  EXPECT_EQ(nodes[visible.front()], fromOrigin(2, 0));
  for (const std::uint32_t index : visible) {
    const double north = nodes[index].latitude - fromOrigin(0, 0).latitude;
    EXPECT_GE(north, fromOrigin(2, 0).latitude - fromOrigin(0, 0).latitude);
  }
}

TEST(VisibleNodes, FarAwayAreFoundFromARoomThatShowsNothingNearer) {
  const Places room{fromOrigin(1, 0.001), fromOrigin(1, 1),  fromOrigin(-1, 1),
                    fromOrigin(-1, -1),   fromOrigin(1, -1), fromOrigin(1, -0.001)};
  Places nodes;
  for (const auto node : widelyAround()) {
    if (node.longitude != fromOrigin(0, 0).longitude) nodes.push_back(node);
  }
  nodes.push_back(fromOrigin(59.5, 0));
  EXPECT_EQ(visibleFrom(fromOrigin(0, 0), nodes, room),
            (Numbers{static_cast<std::uint32_t>(nodes.size() - 1)}));
}

// Through a window nothing is seen but a node far away. The other one is nearer.
TEST(VisibleNodes, SeenThroughAPinholeAreTheNearest) {
  const Places room{fromOrigin(1, 0.00005), fromOrigin(1, 1), fromOrigin(0.02, 1)};
  const Places rest{fromOrigin(-0.02, 1), fromOrigin(-1, 1), fromOrigin(-1, -1), fromOrigin(1, -1),
                    fromOrigin(1, -0.00005)};
  std::vector<WallEdge> edges;
  for (const Places& walls : {room, rest}) {
    for (std::size_t i = 0; i + 1 < walls.size(); ++i) {
      edges.push_back(
          {MKMapPointForCoordinate(walls[i]), MKMapPointForCoordinate(walls[i + 1]), 0});
    }
  }
  Places nodes;
  for (int north = -60; north <= 60; ++north) {
    for (int east = -60; east <= 60; ++east) {
      const bool isSeenThroughPinhole = east == 0 && north > 0;
      const bool isSeenThroughWindow = east > 0 && std::abs(north) < 3;
      if (isSeenThroughPinhole || isSeenThroughWindow || std::hypot(north, east) < 2) continue;
      nodes.push_back(fromOrigin(north, east));
    }
  }
  const auto count = static_cast<std::uint32_t>(nodes.size());
  nodes.push_back(fromOrigin(0, 59.5));
  const auto visible = [&] {
    return visibleNodes(NodeTree(nodes), WallGrid(edges), fromOrigin(0, 0));
  };
  EXPECT_EQ(visible(), (Numbers{count}));
  nodes.push_back(fromOrigin(45, 0));
  EXPECT_EQ(visible(), (Numbers{count + 1, count}));
  nodes.push_back(fromOrigin(20, 0));
  EXPECT_EQ(visible(), (Numbers{count + 2, count + 1}));
}

TEST(VisibleNodes, OfCoordinatesThatAreNotNumbersComeLast) {
  const Places nodes{{kNotANumber, 11}, {48, 11}, {48, kNotANumber}, {48.000001, 11}};
  EXPECT_EQ(visibleFrom({48, 11.000001}, nodes), (Numbers{1, 3, 0, 2}));
}

TEST(VisibleNodes, FromAPositionThatIsNoNumberAreAllInTheOrderOfInsertion) {
  const Places nodes{{48, 11}, {48, 12}, {kNotANumber, 11}, {47, 11}};
  const Places wall{{48, 10}, {49, 12}};
  EXPECT_EQ(visibleFrom({kNotANumber, 11}, nodes, wall), (Numbers{0, 1, 2, 3}));
}

TEST(VisibleNodes, InfinitelyFarAreBeyondTheReachOfAnyOther) {
  EXPECT_EQ(visibleFrom({48, 11}, {{kInfinite, 11}, {40, 11}}), (Numbers{1}));
  EXPECT_EQ(visibleFrom({48, 11}, {{kInfinite, 11}, {-kInfinite, 11}}), (Numbers{0, 1}));
}
