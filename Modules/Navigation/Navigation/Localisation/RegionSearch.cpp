#include "Navigation/Localisation/RegionSearch.hpp"

#include <array>
#include <limits>

#include "Common/GeoPolygonChecker.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Platform/Location.hpp"

namespace KorvaniNavigation {

using KorvaniCommon::GeoPolygonChecker;
using KorvaniPlatform::greatCircleDistance;

double levelGap(std::int64_t a, std::int64_t b) {
  const auto low = static_cast<std::uint64_t>(a < b ? a : b);
  const auto high = static_cast<std::uint64_t>(a < b ? b : a);
  return static_cast<double>(high - low);
}

std::shared_ptr<KRVNavRegion> regionContaining(const Regions& regions,
                                               CLLocationCoordinate2D coordinate,
                                               std::int64_t level) {
  for (const auto& region : regions) {
    if (region->level() != level) continue;
    const std::array corners{region->northEastCoordinate(), region->southWestCoordinate()};
    if (GeoPolygonChecker::isCoordinate(coordinate, corners)) return region;
  }
  return nullptr;
}

std::shared_ptr<KRVNavRegion> regionCloseTo(const Regions& regions,
                                            CLLocationCoordinate2D coordinate, std::int64_t level) {
  std::shared_ptr<KRVNavRegion> best;
  double bestLevelGap = std::numeric_limits<double>::max();
  double bestDistance = std::numeric_limits<double>::max();
  for (const auto& region : regions) {
    if (region->level() != level) {
      const double gap = levelGap(level, region->level());
      if (gap < bestLevelGap) {
        best = region;
        bestLevelGap = gap;
      }
      continue;
    }
    const auto consider = [&](CLLocationCoordinate2D corner) {
      const double distance = greatCircleDistance(coordinate, corner);
      if (!(distance < bestDistance)) return false;
      best = region;
      bestDistance = distance;
      return true;
    };
    if (!consider(region->southWestCoordinate())) consider(region->northEastCoordinate());
    // From here on no region of another level can win: no gap is smaller than none.
    bestLevelGap = 0;
  }
  return best;
}

std::shared_ptr<KRVNavRegion> regionFor(const Regions& regions, CLLocationCoordinate2D coordinate,
                                        std::int64_t level) {
  auto region = regionContaining(regions, coordinate, level);
  return region ? region : regionCloseTo(regions, coordinate, level);
}

}  // namespace KorvaniNavigation
