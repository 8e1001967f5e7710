#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Lint/Checks.hpp"
#include "Lint/LintSubject.hpp"
#include "Platform/Location.hpp"

namespace KorvaniTools {
namespace {

using KorvaniPlatform::greatCircleDistance;
using RegionIndexes = std::vector<std::size_t>;

/// Rectangles that share less than this, in metres, only meet at their borders.
constexpr double kOverlapMetres = 0.01;

std::map<std::int64_t, RegionIndexes> regionsByLevel(const Building& building) {
  std::map<std::int64_t, RegionIndexes> regions;
  for (std::size_t i = 0; i < building.regions.size(); ++i) {
    regions[building.regions[i].level].push_back(i);
  }
  return regions;
}

/// What to call regions: by their names, or by their place among those of their level.
class RegionWords {
 public:
  explicit RegionWords(const Building& building) {
    std::map<std::int64_t, std::size_t> counts;
    for (const BuildingRegion& region : building.regions) {
      const std::size_t number = ++counts[region.level];
      words_.push_back(region.name ? '"' + *region.name + '"'
                                   : "number " + std::to_string(number) + " of level " +
                                         std::to_string(region.level) + featureInBrackets(region));
    }
  }

  /// "region \"North\"", "region number 2 of level 0 (feature 7)".
  std::string of(std::size_t region) const { return "region " + words_[region]; }
  std::string capitalOf(std::size_t region) const { return "Region " + words_[region]; }

 private:
  static std::string featureInBrackets(const BuildingRegion& region) {
    return region.feature ? " (" + featureWords({*region.feature}) + ')' : "";
  }

  std::vector<std::string> words_;
};

void addRegion(LintFinding& finding, const BuildingRegion& region) {
  if (region.feature) finding.features.push_back(*region.feature);
  if (region.name) finding.names.push_back(*region.name);
}

bool isOutside(const Building& building, const BuildingNode& node, const RegionIndexes& regions) {
  return std::none_of(regions.begin(), regions.end(), [&](std::size_t region) {
    return building.regions[region].rectangle.contains(node.coordinate);
  });
}

/// The rectangle that two have in common; none when they only touch.
std::optional<Rectangle> overlapOf(const Rectangle& a, const Rectangle& b) {
  const Coordinate southWest{std::max(a.southWest.latitude, b.southWest.latitude),
                             std::max(a.southWest.longitude, b.southWest.longitude)};
  const Coordinate northEast{std::min(a.northEast.latitude, b.northEast.latitude),
                             std::min(a.northEast.longitude, b.northEast.longitude)};
  if (southWest.latitude >= northEast.latitude || southWest.longitude >= northEast.longitude) {
    return {};
  }
  const Coordinate northWest{northEast.latitude, southWest.longitude};
  const Coordinate southEast{southWest.latitude, northEast.longitude};
  if (greatCircleDistance(southWest, northWest) < kOverlapMetres ||
      greatCircleDistance(southWest, southEast) < kOverlapMetres) {
    return {};
  }
  return Rectangle{southWest, northEast};
}

LintFinding overlapFinding(const Building& building, const RegionWords& words, std::size_t first,
                           std::size_t second, const Rectangle& overlap) {
  LintFinding finding;
  finding.severity = LintSeverity::warning;
  finding.levels = {building.regions[first].level};
  finding.area = overlap;
  finding.at = {{(overlap.southWest.latitude + overlap.northEast.latitude) / 2,
                 (overlap.southWest.longitude + overlap.northEast.longitude) / 2}};
  addRegion(finding, building.regions[first]);
  addRegion(finding, building.regions[second]);
  finding.message = words.capitalOf(first) + " overlaps " + words.of(second) +
                    "; where they do, people are taken to be in the first and see none of the "
                    "second's nodes: draw them side by side.";
  return finding;
}

/// The regions before one in the file that it overlaps, the earliest ones of them: more say nothing
/// new, and a heap of regions upon each other has very many pairs.
class EarlierRegions {
 public:
  /// Whether that one would be told.
  bool wants(std::size_t region) const {
    return regions_.size() < kTold || region < *regions_.rbegin();
  }

  void add(std::size_t region) {
    regions_.insert(region);
    if (regions_.size() > kTold) regions_.erase(std::prev(regions_.end()));
  }

  const std::set<std::size_t>& regions() const { return regions_; }

 private:
  static constexpr std::size_t kTold = 10;

  std::set<std::size_t> regions_;
};

/// Looks for overlaps among the regions of one level, by their indexes.
void findOverlaps(const Building& building, RegionIndexes regions,
                  std::vector<EarlierRegions>& overlaps) {
  const auto rectangle = [&](std::size_t i) -> const Rectangle& {
    return building.regions[i].rectangle;
  };
  const auto west = [&](std::size_t i) { return rectangle(i).southWest.longitude; };
  std::stable_sort(regions.begin(), regions.end(),
                   [&](std::size_t a, std::size_t b) { return west(a) < west(b); });
  for (auto one = regions.begin(); one != regions.end(); ++one) {
    for (auto two = one + 1; two != regions.end(); ++two) {
      if (west(*two) >= rectangle(*one).northEast.longitude) break;
      const auto [earlier, later] = std::minmax(*one, *two);
      if (!overlaps[later].wants(earlier)) continue;
      if (overlapOf(rectangle(earlier), rectangle(later))) overlaps[later].add(earlier);
    }
  }
}

}  // namespace

LintFindings findNodesOutsideRegions(LintSubject& subject) {
  const Building& building = subject.building();
  const auto regions = regionsByLevel(building);
  LintFindings findings;
  for (const BuildingNode& node : building.nodes) {
    if (!isOutside(building, node, regions.at(node.level))) continue;
    LintFinding finding = nodeFinding(node);
    finding.message = nodeWords(node.id) + " lies outside every region of level " +
                      std::to_string(node.level) + ": widen a region, or move the node.";
    findings.push_back(std::move(finding));
  }
  return findings;
}

LintFindings findNodesInOtherRegions(LintSubject& subject) {
  const Building& building = subject.building();
  const auto regions = regionsByLevel(building);
  const RegionWords words(building);
  LintFindings findings;
  for (const BuildingNode& node : building.nodes) {
    const std::size_t taken = subject.sight().regionFor(node.coordinate, node.level);
    if (taken == node.region || isOutside(building, node, regions.at(node.level))) continue;
    LintFinding finding = nodeFinding(node);
    finding.severity = LintSeverity::warning;
    addRegion(finding, building.regions[node.region]);
    addRegion(finding, building.regions[taken]);
    finding.message = nodeWords(node.id) + " belongs to " + words.of(node.region) +
                      ", but people there are taken to be in " + words.of(taken) +
                      " and do not see it: put it into that region, or mend the regions.";
    findings.push_back(std::move(finding));
  }
  return findings;
}

LintFindings findOverlappingRegions(LintSubject& subject) {
  const Building& building = subject.building();
  std::vector<EarlierRegions> overlaps(building.regions.size());
  for (const auto& entry : regionsByLevel(building)) {
    findOverlaps(building, entry.second, overlaps);
  }
  LintFindings findings;
  const RegionWords words(building);
  for (std::size_t region = 0; region < overlaps.size(); ++region) {
    for (const std::size_t earlier : overlaps[region].regions()) {
      const auto overlap =
          overlapOf(building.regions[earlier].rectangle, building.regions[region].rectangle);
      findings.push_back(overlapFinding(building, words, earlier, region, *overlap));
    }
  }
  return findings;
}

}  // namespace KorvaniTools
