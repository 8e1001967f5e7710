/// How often memory is asked for while somebody walks. A phone answers many positions a second on
/// its battery, whatever the size of the building. The counts do not vary from run to run.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/PlacedBuilding.hpp"
#include "Unit/API/CountedAllocations.hpp"

namespace KorvaniTest {
namespace {

constexpr std::size_t kMostAllocations = 50;
constexpr int kPositions = 60;
constexpr double kStride = 1.3;  // metres

/// A corridor with a turn after every seventh node, of six metres each, and a long row of walls
/// beside it.
class Allocations : public FacadeFixture {
 protected:
  struct Corridor {
    explicit Corridor(int count) {
      double north = 0;
      double east = 0;
      for (int i = 0; i < count; ++i) {
        nodes.push_back(building.node(north, east));
        if (i > 0) building.join(nodes[nodes.size() - 2], nodes.back());
        building.wall(-20.0 - i, 0, -20.0 - i, 10);
        (i / 7 % 2 == 0 ? east : north) += 6;
      }
    }

    /// A little beside the corridor, so many metres from its beginning.
    PointPtr positionAfter(double metres) const {
      const auto passed = static_cast<std::size_t>(metres / 6);
      const double share = metres / 6 - static_cast<double>(passed);
      const CLLocationCoordinate2D a = nodes[passed]->coordinate();
      const CLLocationCoordinate2D b = nodes[passed + 1]->coordinate();
      return at({a.latitude + share * (b.latitude - a.latitude) + 1e-6,
                 a.longitude + share * (b.longitude - a.longitude) + 1e-6},
                0);
    }

    PlacedBuilding building;
    std::vector<PointPtr> nodes;
  };

  /// The most allocations that one of the positions of a walk takes, of those after the first.
  template <class Tell>
  std::size_t mostOfAWalk(int nodeCount, bool directions, const Tell& tell) {
    const Corridor corridor(nodeCount);
    provide(corridor.building.graph());
    start(corridor, directions);
    tell(corridor.positionAfter(kStride));
    std::size_t most = 0;
    for (int i = 2; i < kPositions; ++i) {
      most = std::max(most, tell(corridor.positionAfter(i * kStride)));
    }
    EXPECT_TRUE(route_);
    EXPECT_EQ(route_ && !route_->directions().empty(), directions);
    return most;
  }

  void start(const Corridor& corridor, bool directions) {
    route_.reset();
    task_ = navigation().routingTask(corridor.nodes.front(), {corridor.nodes.back()},
                                     [this](auto update, auto route, bool, auto) {
                                       update_ = std::move(update);
                                       route_ = std::move(route);
                                     });
    task_->setDirections(directions);
    task_->run();
    pump();
  }

  std::size_t allocationsOfAnUpdate(const PointPtr& position) {
    const std::size_t before = allocationCount();
    update_->updateStartPoint(position);
    pump();
    return allocationCount() - before;
  }

  std::size_t allocationsOfASnap(const PointPtr& position) {
    const std::size_t before = allocationCount();
    navigation().snappingTask(position, [](CLLocationCoordinate2D) {})->run();
    pump();
    return allocationCount() - before;
  }

 private:
  std::shared_ptr<RoutingTask> task_;
  std::shared_ptr<RoutingUpdateTask> update_;
  std::optional<Route> route_;
};

TEST_F(Allocations, OfAnUpdateAreFewAndDoNotGrowWithTheRoute) {
  const auto update = [this](const PointPtr& position) { return allocationsOfAnUpdate(position); };
  for (const bool directions : {false, true}) {
    const std::size_t ofAShortRoute = mostOfAWalk(30, directions, update);
    EXPECT_GT(ofAShortRoute, 0U);
    EXPECT_LE(ofAShortRoute, kMostAllocations);
    EXPECT_LE(mostOfAWalk(1000, directions, update), ofAShortRoute);
  }
}

TEST_F(Allocations, OfASnapAreFewAndDoNotGrowWithTheRoute) {
  const auto snap = [this](const PointPtr& position) {
    const std::size_t count = allocationsOfASnap(position);
    allocationsOfAnUpdate(position);
    return count;
  };
  const std::size_t onAShortRoute = mostOfAWalk(30, true, snap);
  EXPECT_GT(onAShortRoute, 0U);
  EXPECT_LE(onAShortRoute, kMostAllocations);
  EXPECT_LE(mostOfAWalk(1000, true, snap), onAShortRoute);
}

TEST_F(Allocations, OfASnapWithoutARouteAreFewInBuildingsOfAnySize) {
  const auto mostOfCorridor = [this](int nodeCount) {
    const Corridor corridor(nodeCount);
    provide(corridor.building.graph());
    allocationsOfASnap(corridor.positionAfter(kStride));
    std::size_t most = 0;
    for (int i = 2; i < kPositions; ++i) {
      most = std::max(most, allocationsOfASnap(corridor.positionAfter(i * kStride)));
    }
    return most;
  };
  for (const int nodeCount : {30, 1000}) {
    const std::size_t most = mostOfCorridor(nodeCount);
    EXPECT_GT(most, 0U);
    EXPECT_LE(most, kMostAllocations);
  }
}

}  // namespace
}  // namespace KorvaniTest
