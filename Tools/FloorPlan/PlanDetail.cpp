#include "FloorPlan/PlanDetail.hpp"

#include <algorithm>

#include "FloorPlan/LocalFrame.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

using OutlineRing = std::vector<Coordinate>;

constexpr double kCornersApart[] = {0.02, 0.05, 0.1, 0.2, 0.5, 1};  // metres

bool isTooDetailed(const OutlineRing& ring) { return ring.size() > kMostCorners + 1; }

bool isTooDetailed(const PlanCell& cell) {
  for (const auto& polygon : cell.polygons) {
    for (const OutlineRing& ring : polygon) {
      if (isTooDetailed(ring)) return true;
    }
  }
  return false;
}

/// The ring with corners at least so far from the one before; its ends stay.
OutlineRing cornersApart(const OutlineRing& ring, double metres) {
  const LocalFrame frame(ring.front());
  OutlineRing kept{ring.front()};
  GroundPoint last = frame.metres(ring.front());
  for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
    const GroundPoint at = frame.metres(ring[i]);
    if (groundDistance(last, at) < metres) continue;
    kept.push_back(ring[i]);
    last = at;
  }
  kept.push_back(ring.back());
  return kept;
}

/// How far apart the corners are that were kept; absent when there are too many still.
std::optional<double> thin(OutlineRing& ring) {
  for (const double metres : kCornersApart) {
    OutlineRing kept = cornersApart(ring, metres);
    if (isTooDetailed(kept)) continue;
    ring = std::move(kept);
    return metres;
  }
  return std::nullopt;
}

/// The same of the coarsest of a cell's rings.
std::optional<double> thin(PlanCell& cell) {
  double coarsest = 0;
  for (auto& polygon : cell.polygons) {
    for (OutlineRing& ring : polygon) {
      if (!isTooDetailed(ring)) continue;
      const auto metres = thin(ring);
      if (!metres) return std::nullopt;
      coarsest = std::max(coarsest, *metres);
    }
  }
  return coarsest;
}

}  // namespace

std::optional<FloorPlan> withoutNeedlessDetail(const FloorPlan& plan,
                                               std::vector<std::string>& remarks) {
  if (std::none_of(plan.cells.begin(), plan.cells.end(),
                   [](const PlanCell& cell) { return isTooDetailed(cell); })) {
    return std::nullopt;
  }
  FloorPlan copy = plan;
  for (PlanCell& cell : copy.cells) {
    if (!isTooDetailed(cell)) continue;
    const std::string words =
        cell.source + " has an outline of more than " + std::to_string(kMostCorners) + " corners";
    if (const auto metres = thin(cell)) {
      remarks.push_back(words + ": those less than " + decimals(*metres) + " m apart left out");
      continue;
    }
    remarks.push_back(words + ", too many even 1 m apart: left out");
    cell.polygons.clear();
    cell.levels.clear();
  }
  return copy;
}

}  // namespace KorvaniTools
