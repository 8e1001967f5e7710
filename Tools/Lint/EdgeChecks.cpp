#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Lint/Checks.hpp"
#include "Lint/LintSubject.hpp"
#include "Platform/Location.hpp"

namespace KorvaniTools {
namespace {

double groundMetres(const LintSubject& subject, const BuildingEdge& edge) {
  return KorvaniPlatform::greatCircleDistance(subject.node(edge.from).coordinate,
                                              subject.node(edge.to).coordinate);
}

/// The straight line through the air when levels are so high.
double straightMetres(const LintSubject& subject, const BuildingEdge& edge, double levelHeight) {
  const auto levels = subject.node(edge.to).level - subject.node(edge.from).level;
  return std::hypot(groundMetres(subject, edge), static_cast<double>(levels) * levelHeight);
}

bool changesLevel(const LintSubject& subject, const BuildingEdge& edge) {
  return subject.node(edge.from).level != subject.node(edge.to).level;
}

/// Whether an edge of that length is shorter than `metres`, by more than rounding explains.
bool isShorter(const LintSubject& subject, double length, double metres) {
  const LintOptions& options = subject.options();
  return length < metres - std::max(options.shortShare * metres, options.shortMetres);
}

LintFinding shortFinding(const LintSubject& subject, const BuildingEdge& edge, double ground) {
  LintFinding finding = edgeFinding(subject, edge);
  finding.message = edgeWords(edge) + " is " + exactMetres(*edge.distance) +
                    " long, but its nodes are " + exactMetres(ground) +
                    " apart: mend its distance, or leave it out to have it measured.";
  return finding;
}

LintFinding flatFinding(const LintSubject& subject, const BuildingEdge& edge, double least) {
  LintFinding finding = edgeFinding(subject, edge);
  finding.severity = LintSeverity::warning;
  finding.message = edgeWords(edge) + " is " + exactMetres(*edge.distance) +
                    " long, but from level " + std::to_string(subject.node(edge.from).level) +
                    " to level " + std::to_string(subject.node(edge.to).level) + " it is " +
                    exactMetres(least) + " even where levels are low: mend its distance.";
  return finding;
}

}  // namespace

LintFindings findShortEdges(LintSubject& subject) {
  LintFindings findings;
  for (const BuildingEdge& edge : subject.building().edges) {
    if (!edge.distance) continue;
    const double ground = groundMetres(subject, edge);
    const double least = straightMetres(subject, edge, subject.options().leastLevelHeight);
    if (isShorter(subject, *edge.distance, ground)) {
      findings.push_back(shortFinding(subject, edge, ground));
    } else if (isShorter(subject, *edge.distance, least)) {
      findings.push_back(flatFinding(subject, edge, least));
    }
  }
  return findings;
}

LintFindings findLongEdges(LintSubject& subject) {
  const LintOptions& options = subject.options();
  LintFindings findings;
  for (const BuildingEdge& edge : subject.building().edges) {
    if (!edge.distance) continue;
    const double straight = straightMetres(subject, edge, options.levelHeight);
    const bool tooLong = *edge.distance > options.longFactor * straight &&
                         *edge.distance > straight + options.longMetres;
    if (!tooLong) continue;
    LintFinding finding = edgeFinding(subject, edge);
    finding.severity = LintSeverity::warning;
    finding.message = edgeWords(edge) + " is " + exactMetres(*edge.distance) +
                      " long, but straight on it would be " + exactMetres(straight) +
                      ": mend its distance, or draw its bends with nodes of their own.";
    findings.push_back(std::move(finding));
  }
  return findings;
}

LintFindings findEdgesToThemselves(LintSubject& subject) {
  LintFindings findings;
  for (const BuildingEdge& edge : subject.building().edges) {
    if (edge.from != edge.to) continue;
    LintFinding finding = edgeFinding(subject, edge);
    finding.severity = LintSeverity::warning;
    finding.nodes = {edge.from};
    finding.lines.clear();
    finding.message = edgeWords(edge) + " leads from node " + std::to_string(edge.from) +
                      " to itself, so it is never used: remove it, or mend its ends.";
    findings.push_back(std::move(finding));
  }
  return findings;
}

LintFindings findDuplicateEdges(LintSubject& subject) {
  LintFindings findings;
  std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> features;
  for (const BuildingEdge& edge : subject.building().edges) {
    if (edge.from == edge.to) continue;
    std::set<std::size_t> earlier;
    const auto enter = [&](std::int64_t from, std::int64_t to) {
      const auto [found, isNew] = features.try_emplace({from, to}, edge.feature);
      if (!isNew) earlier.insert(found->second);
      found->second = edge.feature;
    };
    enter(edge.from, edge.to);
    if (!edge.oneway) enter(edge.to, edge.from);
    if (earlier.empty()) continue;
    LintFinding finding = edgeFinding(subject, edge);
    finding.severity = LintSeverity::warning;
    const std::vector<std::size_t> others(earlier.begin(), earlier.end());
    finding.message = edgeWords(edge) + " (feature " + std::to_string(edge.feature) +
                      ") takes the place of an edge between the same nodes (" +
                      featureWords(others) + "): remove one of them.";
    finding.features.insert(finding.features.end(), others.begin(), others.end());
    findings.push_back(std::move(finding));
  }
  return findings;
}

LintFindings findUntypedLevelChanges(LintSubject& subject) {
  LintFindings findings;
  for (const BuildingEdge& edge : subject.building().edges) {
    if (!changesLevel(subject, edge) || !edge.type.value_or("").empty()) continue;
    LintFinding finding = edgeFinding(subject, edge);
    finding.severity = LintSeverity::warning;
    finding.message = edgeWords(edge) + " changes from level " +
                      std::to_string(subject.node(edge.from).level) + " to level " +
                      std::to_string(subject.node(edge.to).level) +
                      " without a type, so instructions cannot say what to take: give it one, such "
                      "as \"stairs\" or \"elevator\".";
    findings.push_back(std::move(finding));
  }
  return findings;
}

LintFindings findEdgesOverSeveralLevels(LintSubject& subject) {
  constexpr std::size_t kNamed = 4;
  std::set<std::int64_t> unique;
  for (const BuildingNode& node : subject.building().nodes) unique.insert(node.level);
  const std::vector<std::int64_t> levels(unique.begin(), unique.end());
  LintFindings findings;
  for (const BuildingEdge& edge : subject.building().edges) {
    const auto [low, high] =
        std::minmax(subject.node(edge.from).level, subject.node(edge.to).level);
    const auto first = std::upper_bound(levels.begin(), levels.end(), low);
    const auto last = std::lower_bound(levels.begin(), levels.end(), high);
    if (first >= last) continue;
    std::vector<std::string> passed;
    const auto count = static_cast<std::size_t>(last - first);
    for (auto level = first; level != last && count <= kNamed; ++level) {
      passed.push_back(std::to_string(*level));
    }
    LintFinding finding = edgeFinding(subject, edge);
    finding.severity = LintSeverity::note;
    finding.message = edgeWords(edge) + " passes " +
                      (count > kNamed ? std::to_string(count) + " levels"
                                      : (count == 1 ? "level " : "levels ") + listWords(passed)) +
                      " without a stop: if people can get off there, make it one edge a level.";
    findings.push_back(std::move(finding));
  }
  return findings;
}

}  // namespace KorvaniTools
