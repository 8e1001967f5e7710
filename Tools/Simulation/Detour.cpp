#include "Simulation/Detour.hpp"

#include <algorithm>
#include <limits>
#include <memory>
#include <set>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Simulation/GroundOffset.hpp"
#include "Simulation/RandomSource.hpp"
#include "Simulation/RandomStreams.hpp"

namespace KorvaniTools {
namespace {

using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Route;
using KorvaniNavigation::Step;
using KorvaniPlatform::greatCircleDistance;

using EdgePtr = std::shared_ptr<KRVNavEdge>;

constexpr double kShortestBranch = 15.0;  // metres
constexpr double kLongestBranch = 40.0;

Whereabouts placeOf(const KRVNavPoint& point) { return {point.coordinate(), point.level()}; }

Coordinate between(Coordinate a, Coordinate b, double fraction) {
  return {a.latitude + fraction * (b.latitude - a.latitude),
          a.longitude + fraction * (b.longitude - a.longitude)};
}

double distanceToRoute(const Whereabouts& place, const Route& route) {
  double nearest = std::numeric_limits<double>::infinity();
  for (const Step& step : route.steps()) {
    const KRVNavPoint& start = *step.start();
    const KRVNavPoint& end = *step.end();
    if (start.level() != place.level && end.level() != place.level) continue;
    nearest =
        std::min(nearest, distanceToLine(place.coordinate, start.coordinate(), end.coordinate()));
  }
  return nearest;
}

class BranchGrower {
 public:
  BranchGrower(const Route& route, bool barrierFree, RandomSource& random)
      : route_(route), barrierFree_(barrierFree), random_(random) {
    for (const auto& point : route.points()) onRoute_.insert(point->identifier());
  }

  /// All branches that leave the route where that step ends.
  void growAfter(std::size_t step, std::vector<Branch>& branches) {
    const KRVNavPoint& fork = *route_.steps()[step].end();
    if (fork.identifier() < 0) return;
    for (const EdgePtr& edge : waysOn(fork, onRoute_)) {
      Branch branch{step + 1, grow(edge)};
      if (distanceToRoute(branch.places.back(), route_) < kOffRoute) continue;
      branches.push_back(std::move(branch));
    }
  }

 private:
  using Identifiers = std::set<std::int64_t>;

  std::vector<EdgePtr> waysOn(const KRVNavPoint& node, const Identifiers& passed) const {
    std::vector<EdgePtr> ways;
    for (const EdgePtr& edge : node.neighbourEdges()) {
      const KRVNavPoint& end = *edge->end();
      if (end.level() != node.level() || passed.contains(end.identifier())) continue;
      if (barrierFree_ && !edge->isBarrierFree()) continue;
      ways.push_back(edge);
    }
    return ways;
  }

  std::vector<Whereabouts> grow(EdgePtr edge) {
    const double wanted = kShortestBranch + random_.uniform() * (kLongestBranch - kShortestBranch);
    Identifiers passed = onRoute_;
    std::vector<Whereabouts> places;
    double length = 0;
    for (;;) {
      const KRVNavPoint& from = *edge->start();
      const KRVNavPoint& to = *edge->end();
      const double metres = greatCircleDistance(from.coordinate(), to.coordinate());
      if (length + metres >= wanted) {
        const double fraction = (wanted - length) / metres;
        places.push_back({between(from.coordinate(), to.coordinate(), fraction), to.level()});
        return places;
      }
      length += metres;
      places.push_back(placeOf(to));
      passed.insert(to.identifier());
      const std::vector<EdgePtr> ways = waysOn(to, passed);
      if (ways.empty()) return places;
      edge = ways[random_.index(ways.size())];
    }
  }

  const Route& route_;
  bool barrierFree_;
  RandomSource& random_;
  Identifiers onRoute_;
};

}  // namespace

std::vector<Branch> branchesOff(const Route& route, bool barrierFree, std::uint64_t seed) {
  RandomSource random(seed, kDetourStream);
  BranchGrower grower(route, barrierFree, random);
  std::vector<Branch> branches;
  for (std::size_t i = 0; i + 1 < route.steps().size(); ++i) grower.growAfter(i, branches);
  for (std::size_t i = branches.size(); i > 1; --i) {
    std::swap(branches[i - 1], branches[random.index(i)]);
  }
  return branches;
}

}  // namespace KorvaniTools
