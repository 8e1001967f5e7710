#pragma once

/// What the tests of the older finder look at.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Navigation/Path Finding/KRVNavDijkstra.hpp"
#include "PathFinderFixture.hpp"

namespace KorvaniTest {

using KorvaniNavigation::KRVNavDijkstra;
using KorvaniNavigation::Number;

class LegacySearchTest : public PathFinderTest<KRVNavDijkstra> {
 protected:
  std::int64_t id(const std::string& name) const {
    return building.point(name)->identifierNumber();
  }

  KRVNavDijkstra::Identifiers ids(std::string_view names) const {
    KRVNavDijkstra::Identifiers result;
    for (const auto& point : points(names)) result.push_back(point->identifierNumber());
    return result;
  }

  /// The entry for a node; absent when there is none.
  std::optional<Number> entry(const std::string& name) const {
    const auto distances = finder.distancesFromSource();
    const Number* found = distances.find(id(name));
    return found ? std::optional(*found) : std::nullopt;
  }

  /// Puts a dictionary into the finder by hand.
  void setEntries(std::string_view names, const std::vector<Number>& numbers) {
    KRVNavDijkstra::Distances distances;
    for (std::size_t i = 0; i < names.size(); ++i) {
      distances.set(id(std::string(1, names[i])), numbers[i]);
    }
    finder.setDistancesFromSource(distances);
  }

  /// The name of the nearest of these nodes; "" for none.
  std::string nearest(std::string_view names) const {
    const auto found = finder.nodeIdentifierWithSmallestDistanceIn(ids(names));
    return found ? building.names({building.graph()->nodeWithIdentifier(*found)}) : "";
  }
};

/// What marks a node that was not reached.
inline const Number kUnreachedMark = Number::integer(-1);

}  // namespace KorvaniTest
