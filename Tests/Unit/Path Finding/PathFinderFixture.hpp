#pragma once

/// A small building with edges of given costs, and a path finder to search it with.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "Support/TextBuilding.hpp"

namespace KorvaniTest {

/// Tests of the finder that a subclass makes.
template <class Finder>
class PathFinderTest : public testing::Test {
 protected:
  template <class... Arguments>
  explicit PathFinderTest(const Arguments&... arguments) : finder(arguments...) {}

  /// One-way edge of that cost.
  void edge(const std::string& from, const std::string& to, double distance,
            double multiplicator = 1, bool isBarrierFree = true) {
    building.connect(from, to,
                     {.distance = distance,
                      .multiplicator = multiplicator,
                      .isBarrierFree = isBarrierFree,
                      .oneWay = true});
  }

  std::vector<PointPtr> points(std::string_view names) const {
    std::vector<PointPtr> result;
    for (const char name : names) result.push_back(building.point(std::string(1, name)));
    return result;
  }

  /// The way's nodes: "ABD", "" for none.
  std::string find(std::string_view starts, const std::vector<double>& distances,
                   std::string_view destinations, bool argument = false) {
    return building.names(finder.findPathInGraph(building.graph(), points(starts), distances,
                                                 points(destinations), argument));
  }

  /// The name of the reached destination; "" for none.
  std::string destination() const {
    return finder.destination() ? building.names({finder.destination()}) : "";
  }

  TextBuilding building{"A B C D E F"};
  Finder finder;
};

}  // namespace KorvaniTest
