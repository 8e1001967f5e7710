#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "Building/Building.hpp"
#include "Lint/LintFinding.hpp"

namespace KorvaniTools {

/// Finds what a map maker must mend in a building, before somebody walks into it.
///
///     const Building building = readBuilding("hall.building.geojson");
///     for (const LintFinding& finding : lintBuilding(building, {})) {
///       std::cout << finding.message << '\n';
///     }
///
/// What the rules say about walls, sight and reach is what the engine does with the same building:
/// the same walls block the same lines, a place is mapped onto the same nodes, and a way leads
/// where the engine finds one.

/// A rule, as `--list-rules` shows it.
struct LintRule {
  std::string name;       ///< in small letters with hyphens; never changes
  LintSeverity severity;  ///< of its gravest findings
  std::string finds;      ///< what it finds, half a sentence
};

/// All rules, in the order in which findings of one level and severity are listed.
const std::vector<LintRule>& lintRules();

struct LintOptions {
  std::set<std::string> only;  ///< rules to try; empty: all
  std::set<std::string> skip;  ///< rules not to try

  /// Metres from one level to the next, where an edge's length is compared with its straight line.
  double levelHeight = 3.0;
  /// An edge is too short when it is shorter than the ground between its nodes by more than this
  /// share of it and this many metres, which leaves room for rounding and for other ellipsoids.
  double shortShare = 0.01;
  double shortMetres = 0.1;
  /// An edge from one level to another rises by so many metres a level at least; half-levels and
  /// low mezzanines count as levels.
  double leastLevelHeight = 1.5;
  /// An edge is too long when it is more than so many times, and more than so many metres, longer
  /// than the straight line.
  double longFactor = 3.0;
  double longMetres = 10.0;
  /// Nodes of one level that are not farther apart than this, in metres, are one and the same.
  double sameNodeMetres = 0.01;
};

/// How many findings there are of each severity.
struct LintCounts {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t notes = 0;
};

LintCounts countFindings(const std::vector<LintFinding>& findings);

/// What is wrong with `building`, every node and wall of which has its regions, as those have that
/// were read from a file: by level, then the gravest first, then by rule, then in the order
/// of the file. The same building gives the same findings.
///
/// Lengths and sight are computed with the engine's main configuration. One thread at a time. Cost:
/// near linear in edges, walls and nodes; places cost as much each as looking once at the nodes of
/// their region.
///
/// @throws InputError when the options name a rule that there is not
std::vector<LintFinding> lintBuilding(const Building& building, const LintOptions& options);

}  // namespace KorvaniTools
