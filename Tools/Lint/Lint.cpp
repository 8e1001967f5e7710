#include "Lint/Lint.hpp"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

#include "Lint/Checks.hpp"
#include "Lint/LintSubject.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

struct CheckedRule {
  LintRule rule;
  LintFindings (*check)(LintSubject&);
};

constexpr LintSeverity kError = LintSeverity::error;
constexpr LintSeverity kWarning = LintSeverity::warning;
constexpr LintSeverity kNote = LintSeverity::note;

const std::vector<CheckedRule>& checkedRules() {
  static const std::vector<CheckedRule> kRules{
      {{"edge-through-wall", kError, "edges that run through a wall or touch one"},
       findEdgesThroughWalls},
      {{"edge-too-short", kError,
        "edges shorter than the ground between their nodes; a warning when only their rise is too "
        "short"},
       findShortEdges},
      {{"edge-too-long", kWarning, "edges much longer than the straight line of their nodes"},
       findLongEdges},
      {{"edge-to-itself", kWarning, "edges from a node to itself"}, findEdgesToThemselves},
      {{"duplicate-edge", kWarning, "edges that replace another of the same nodes and direction"},
       findDuplicateEdges},
      {{"level-change-without-type", kWarning,
        "edges to another level that do not say what to take"},
       findUntypedLevelChanges},
      {{"edge-over-levels", kNote, "edges that pass a level without a stop"},
       findEdgesOverSeveralLevels},
      {{"node-outside-regions", kError, "nodes outside every region of their level"},
       findNodesOutsideRegions},
      {{"node-in-other-region", kWarning, "nodes that people where they are do not see"},
       findNodesInOtherRegions},
      {{"duplicate-nodes", kWarning, "nodes of one level in the same place"}, findDuplicateNodes},
      {{"overlapping-regions", kWarning, "regions of one level that overlap"},
       findOverlappingRegions},
      {{"unreachable-island", kError,
        "parts that are not joined to the main network; a warning "
        "when no place is there"},
       findIslands},
      {{"one-way-trap", kError,
        "parts without a way back into the main network; a warning when no "
        "place is there"},
       findOneWayTraps},
      {{"no-way-in", kError,
        "parts without a way in from the main network; a warning when no "
        "place is there"},
       findPartsWithoutWayIn},
      {{"level-without-connection", kError,
        "levels that no edge joins to another; a warning when "
        "they have no nodes"},
       findUnconnectedLevels},
      {{"place-on-empty-level", kError, "places on a level without nodes"},
       findPlacesOnEmptyLevels},
      {{"place-out-of-sight", kError, "places that see no node"}, findPlacesOutOfSight},
      {{"place-unreachable", kError, "places that no way from the main network leads to"},
       findUnreachablePlaces},
      {{"place-without-way-out", kError, "places that no way leads from into the main network"},
       findPlacesWithoutWayOut},
      {{"place-behind-barrier", kWarning,
        "places that are lost to those who need barrier-free ways"},
       findPlacesWithBarriers},
      {{"obstacle-outside-regions", kWarning, "obstacles outside every region of their level"},
       findObstaclesOutsideRegions},
      {{"obstacle-without-extent", kNote, "obstacles that are a single spot"},
       findObstaclesWithoutExtent},
  };
  return kRules;
}

void requireRules(const std::set<std::string>& names) {
  for (const std::string& name : names) {
    const auto& rules = lintRules();
    const bool known = std::any_of(rules.begin(), rules.end(),
                                   [&](const LintRule& rule) { return rule.name == name; });
    if (known) continue;
    std::string message = "no rule \"" + name + "\"; the rules are";
    for (const LintRule& rule : rules) message += ' ' + rule.name;
    throw InputError(message);
  }
}

bool isWanted(const LintRule& rule, const LintOptions& options) {
  return (options.only.empty() || options.only.contains(rule.name)) &&
         !options.skip.contains(rule.name);
}

/// What lies on no level comes first.
std::int64_t firstLevel(const LintFinding& finding) {
  return finding.levels.empty() ? std::numeric_limits<std::int64_t>::min() : finding.levels.front();
}

}  // namespace

const char* severityName(LintSeverity severity) {
  switch (severity) {
    case LintSeverity::note:
      return "note";
    case LintSeverity::warning:
      return "warning";
    case LintSeverity::error:
      break;
  }
  return "error";
}

const std::vector<LintRule>& lintRules() {
  static const std::vector<LintRule> kRules = [] {
    std::vector<LintRule> rules;
    for (const CheckedRule& checked : checkedRules()) rules.push_back(checked.rule);
    return rules;
  }();
  return kRules;
}

LintCounts countFindings(const std::vector<LintFinding>& findings) {
  LintCounts counts;
  for (const LintFinding& finding : findings) {
    if (finding.severity == LintSeverity::error) ++counts.errors;
    if (finding.severity == LintSeverity::warning) ++counts.warnings;
    if (finding.severity == LintSeverity::note) ++counts.notes;
  }
  return counts;
}

std::vector<LintFinding> lintBuilding(const Building& building, const LintOptions& options) {
  requireRules(options.only);
  requireRules(options.skip);
  LintSubject subject(building, options);
  std::vector<LintFinding> findings;
  for (const CheckedRule& checked : checkedRules()) {
    if (!isWanted(checked.rule, options)) continue;
    for (LintFinding& finding : checked.check(subject)) {
      finding.rule = checked.rule.name;
      findings.push_back(std::move(finding));
    }
  }
  std::stable_sort(findings.begin(), findings.end(),
                   [](const LintFinding& a, const LintFinding& b) {
                     const std::int64_t levelA = firstLevel(a);
                     const std::int64_t levelB = firstLevel(b);
                     return std::tie(levelA, b.severity) < std::tie(levelB, a.severity);
                   });
  return findings;
}

}  // namespace KorvaniTools
