#pragma once

/// A small building with edges of given costs, and a finder to search it with.

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniTest {

using KorvaniNavigation::DijkstraImproved;

class SearchTest : public testing::Test {
 protected:
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

  /// Puts starts and destinations into the finder as a search does, without relaxing anything.
  void prepare(std::string_view starts, const std::vector<double>& distances,
               std::string_view destinations) {
    finder.setInterrupted(true);
    find(starts, distances, destinations);
    finder.setInterrupted(false);
  }

  void wave() { finder.iteration(building.graph()); }

  std::string waiting() const { return building.names(finder.nodesToCheck()); }

  /// The name of the reached destination; "" for none.
  std::string destination() const {
    return finder.destination() ? building.names({finder.destination()}) : "";
  }

  /// Cost of the best way to a point so far; NaN when it was not reached.
  double cost(const std::string& name) const {
    const auto path = finder.pathTo(*building.point(name));
    return path ? path->distance : std::numeric_limits<double>::quiet_NaN();
  }

  /// The best way to a point so far.
  std::string way(const std::string& name) const {
    const auto path = finder.pathTo(*building.point(name));
    return path ? building.names(path->nodes) : "";
  }

  TextBuilding building{"A B C D E F"};
  DijkstraImproved finder{std::weak_ptr<KorvaniNavigation::ConfigDependents>()};
};

}  // namespace KorvaniTest
