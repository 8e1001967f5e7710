#include "FloorPlan/PlanLevels.hpp"

#include <cmath>
#include <set>

#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

constexpr double kFarthestLevel = 1000;

template <typename Things>
void collect(const Things& things, std::set<double>& levels) {
  for (const auto& thing : things) {
    for (const double level : thing.levels) {
      if (!std::isnan(level)) levels.insert(level == 0 ? 0 : level);  // no minus zero
    }
  }
}

}  // namespace

PlanLevels::PlanLevels(const FloorPlan& plan, std::vector<std::string>& remarks) {
  std::set<double> used;
  collect(plan.cells, used);
  collect(plan.walls, used);
  collect(plan.lines, used);
  collect(plan.shafts, used);
  number({used.lower_bound(0), used.end()}, 1, remarks);
  std::vector<double> below(used.begin(), used.lower_bound(0));
  number({below.rbegin(), below.rend()}, -1, remarks);
}

void PlanLevels::number(const std::vector<double>& outwards, int direction,
                        std::vector<std::string>& remarks) {
  double shift = 0;
  for (const double source : outwards) {
    const double away = std::abs(source);
    if (away != std::floor(away)) ++shift;
    const double number = std::floor(away) + shift;
    if (number > kFarthestLevel) {
      remarks.push_back("level " + decimals(source) +
                        " is beyond the 1000 levels up or down that " +
                        "a building can have: left out");
      continue;
    }
    const auto level = static_cast<std::int64_t>(direction * number);
    levels_.emplace(source, level);
    sources_.emplace(level, source);
  }
}

std::optional<std::int64_t> PlanLevels::of(double source) const {
  const auto found = levels_.find(source);
  return found == levels_.end() ? std::nullopt : std::optional(found->second);
}

std::vector<std::int64_t> PlanLevels::of(const PlanLevelSet& sources) const {
  std::set<std::int64_t> result;
  for (const double source : sources) {
    if (const auto level = of(source)) result.insert(*level);
  }
  return {result.begin(), result.end()};
}

std::vector<LevelName> PlanLevels::names(const FloorPlan& plan) const {
  std::vector<LevelName> names;
  for (const auto& [level, source] : sources_) {
    LevelName name{level, std::nullopt, decimals(source)};
    for (const PlanLevel& described : plan.levels) {
      if (described.level != source) continue;
      name.name = described.name ? described.name : described.source;
      break;
    }
    // On the door is the source's number.
    if (!name.name && source != static_cast<double>(level)) name.name = name.source;
    names.push_back(std::move(name));
  }
  return names;
}

}  // namespace KorvaniTools
