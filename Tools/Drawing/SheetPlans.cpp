#include "Drawing/SheetPlans.hpp"

#include <algorithm>
#include <optional>

namespace KorvaniTools {
namespace {

constexpr double kPlanWidth = 1400;  // pixels
constexpr double kPlanHeight = 1000;
constexpr double kLegible = 5;  // pixels for a metre; rooms and their names need that much
constexpr double kLargestScale = 60;
constexpr double kGrowth = 2;  // over a page's width, for the sake of names
constexpr double kGrowthOfACampus = 4;
constexpr double kVisible = 1;       // pixels for a metre; with less a room is a speck
constexpr double kWorthADetail = 2;  // times as large

/// Plans fit into a page's width; those that would be too small to read grow beyond it.
double scaleFor(const SceneWindow& window, double growth) {
  if (!(window.width > 0 && window.height > 0)) return 1;
  const double scale = std::min(kPlanWidth / window.width, kPlanHeight / window.height);
  const double grown = std::max(scale, std::min(kLegible, scale * growth));
  return std::min(grown, kLargestScale);
}

/// The part of a level's plan that shows its rooms; none when the plan as a whole shows them large
/// enough, or nearly as large.
std::optional<SheetPlan> detailOf(const Scene& scene, const SheetPlan& plan) {
  if (plan.level->rooms.empty() || plan.scale >= kLegible) return {};
  SheetPlan detail = plan;
  detail.window = roomWindowOf(scene, *plan.level);
  detail.scale = scaleFor(detail.window, kGrowth);
  detail.detail = true;
  if (detail.scale < kWorthADetail * plan.scale) return {};
  return detail;
}

void addApart(const Scene& scene, const SceneLevel& level, std::vector<SheetPlan>& plans) {
  SheetPlan plan{&level, windowOf(scene, level)};
  plan.scale = scaleFor(plan.window, kGrowth);
  const std::optional<SheetPlan> detail = detailOf(scene, plan);
  const double grown = scaleFor(plan.window, kGrowthOfACampus);
  if (!detail && grown >= kVisible) plan.scale = grown;
  plans.push_back(plan);
  if (detail) plans.push_back(*detail);
}

}  // namespace

std::vector<SheetPlan> sheetPlans(const Scene& scene, const std::vector<const SceneLevel*>& levels,
                                  bool apart) {
  const SceneWindow whole{0, 0, scene.frame.width(), scene.frame.height()};
  const double scale = scaleFor(whole, kGrowth);
  std::vector<SheetPlan> plans;
  for (const SceneLevel* level : levels) {
    if (apart || scale < kLegible) {
      addApart(scene, *level, plans);
    } else {
      plans.push_back({level, whole, scale});
    }
  }
  return plans;
}

}  // namespace KorvaniTools
