#include "Navigation/Path Finding/DijkstraImproved/PointSet.hpp"

#include <gtest/gtest.h>

#include "Support/Points.hpp"

namespace KorvaniTest {
namespace {

using KorvaniNavigation::PointSet;

TEST(PointSet, NewOneContainsNothing) {
  EXPECT_FALSE(PointSet().contains(*at(0, 0)));
  EXPECT_FALSE(PointSet().contains(*at(0, 0, 0, 7)));
}

TEST(PointSet, PointsOfOneIdentifierAreOneElement) {
  PointSet set;
  EXPECT_TRUE(set.insert(*at(0, 0, 0, 7)));
  EXPECT_FALSE(set.insert(*at(5, 5, 2, 7)));
  EXPECT_TRUE(set.contains(*at(1, 1, 1, 7)));
  EXPECT_FALSE(set.contains(*at(0, 0, 0, 8)));
}

TEST(PointSet, PointsWithoutIdentifierAreTheirObjects) {
  PointSet set;
  const auto a = at(0, 0);
  const auto b = at(0, 0);
  EXPECT_TRUE(set.insert(*a));
  EXPECT_FALSE(set.insert(*a));
  EXPECT_TRUE(set.contains(*a));
  EXPECT_FALSE(set.contains(*b));
  EXPECT_TRUE(set.insert(*b));
}

TEST(PointSet, AgreesWithPointEquality) {
  std::vector<PointPtr> points;
  for (const std::int64_t identifier : {-2, -1, 0, 1, 1, -1, -2, 0, 7}) {
    points.push_back(at(0, 0, 0, identifier));
  }
  for (const auto& member : points) {
    PointSet set;
    set.insert(*member);
    for (const auto& point : points) EXPECT_EQ(set.contains(*point), member->isEqual(*point));
  }
}

}  // namespace
}  // namespace KorvaniTest
