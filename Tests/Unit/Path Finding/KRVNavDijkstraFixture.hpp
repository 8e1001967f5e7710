#pragma once

/// A small building with edges of given costs, and the older finder to search it with.

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Navigation/Path Finding/KRVNavDijkstra.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniTest {

using KorvaniNavigation::KRVNavDijkstra;
using KorvaniNavigation::Number;

class LegacySearchTest : public testing::Test {
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

  /// The name of the reached destination; "" for none.
  std::string destination() const {
    return finder.destination() ? building.names({finder.destination()}) : "";
  }

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

  TextBuilding building{"A B C D E F"};
  KRVNavDijkstra finder;
};

/// What marks a node that was not reached.
inline const Number kUnreachedMark = Number::integer(-1);

}  // namespace KorvaniTest
