#pragma once

/// A building in metres with two regions side by side, and positions for a denier to judge.
///
/// The western region of level 0 ends where the eastern one begins, 10 m east of the origin; level
/// 1 is one region. All reach 1000 m in the other directions. There are no walls at first.

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include "Navigation/API/Config.hpp"
#include "Navigation/API/ConfigDependents.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Obstacles/ObstacleDenier.hpp"
#include "Support/FacadeFixture.hpp"

namespace KorvaniTest {

using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavRegion;

class DenierFixture : public FacadeFixture {
 protected:
  using RegionPtr = std::shared_ptr<KRVNavRegion>;

  DenierFixture() {
    for (const auto& region : {west, east, upstairs}) graph->add(region);
  }

  static RegionPtr regionOf(std::int64_t level, double fromEast, double toEast) {
    auto region = std::make_shared<KRVNavRegion>(level);
    region->setSouthWestCoordinate(fromOrigin(-1000, fromEast));
    region->setNorthEastCoordinate(fromOrigin(1000, toEast));
    return region;
  }

  /// A wall across, that many metres north of the origin, from far in the west to far in the east.
  static std::shared_ptr<KRVNavObstacle> wallAcross(const RegionPtr& region, double north) {
    auto wall = std::make_shared<KRVNavObstacle>(
        std::vector<CLLocationCoordinate2D>{fromOrigin(north, -2000), fromOrigin(north, 2000)});
    region->addObstacle(wall);
    return wall;
  }

  /// A bundle that the facade does not know.
  static std::shared_ptr<ConfigDependents> strangeBundle() {
    return std::make_shared<ConfigDependents>("strange", std::make_shared<Config>());
  }

  const std::shared_ptr<KRVNavGraph> graph = std::make_shared<KRVNavGraph>();
  const RegionPtr west = regionOf(0, -1000, 10);
  const RegionPtr east = regionOf(0, 10, 1000);
  const RegionPtr upstairs = regionOf(1, -1000, 1000);
};

/// Has so many threads, all at once, check so many positions each on level 0.
inline void checkOnThreads(KorvaniNavigation::ObstacleDenier& denier, int threadCount, int turns) {
  std::atomic<int> waiting{threadCount};
  std::vector<std::thread> threads;
  for (int i = 0; i < threadCount; ++i) {
    threads.emplace_back([&denier, &waiting, turns, i] {
      --waiting;
      while (waiting.load() > 0) std::this_thread::yield();
      for (int turn = 0; turn < turns; ++turn) denier.check(*at(fromOrigin(i, turn % 5)));
    });
  }
  for (auto& thread : threads) thread.join();
}

/// Shows positions to a denier, and tells whether it lets them through.
class Walker {
 public:
  explicit Walker(KorvaniNavigation::ObstacleDenier& denier) : denier_(denier) {}

  /// Whether the position comes back as it is. When it does not, what comes back must be the one
  /// that was accepted last.
  bool goesTo(double north, double east, std::int64_t level = 0) {
    const auto position = at(fromOrigin(north, east), level);
    const CLLocationCoordinate2D result = denier_.check(*position);
    if (result == position->coordinate()) {
      accepted_ = result;
      return true;
    }
    EXPECT_EQ(result.latitude, accepted_.latitude);
    EXPECT_EQ(result.longitude, accepted_.longitude);
    return false;
  }

  /// Moves around in one place that many times, which no wall is to obstruct.
  void strolls(int times, double north, double east, std::int64_t level = 0) {
    for (int i = 0; i < times; ++i) {
      EXPECT_TRUE(goesTo(north + 0.1 * (i % 2), east, level)) << "stroll " << i;
    }
  }

  CLLocationCoordinate2D accepted() const { return accepted_; }

 private:
  KorvaniNavigation::ObstacleDenier& denier_;
  CLLocationCoordinate2D accepted_;
};

}  // namespace KorvaniTest
