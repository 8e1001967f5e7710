#pragma once

/// What the tests of the wave search look at.

#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"
#include "PathFinderFixture.hpp"

namespace KorvaniTest {

using KorvaniNavigation::DijkstraImproved;

class SearchTest : public PathFinderTest<DijkstraImproved> {
 protected:
  SearchTest() : PathFinderTest(std::weak_ptr<KorvaniNavigation::ConfigDependents>()) {}

  /// Puts starts and destinations into the finder as a search does, without relaxing anything.
  void prepare(std::string_view starts, const std::vector<double>& distances,
               std::string_view destinations) {
    finder.setInterrupted(true);
    find(starts, distances, destinations);
    finder.setInterrupted(false);
  }

  void wave() { finder.iteration(building.graph()); }

  std::string waiting() const { return building.names(finder.nodesToCheck()); }

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
};

}  // namespace KorvaniTest
