#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "Lint/Checks.hpp"
#include "Lint/LintSubject.hpp"

namespace KorvaniTools {
namespace {

/// A finding for every place that `isFaulty` says yes to, by the place's index, with the nodes that
/// a route to it would end at.
template <class IsFaulty>
LintFindings placeFindings(LintSubject& subject, LintSeverity severity, const std::string& what,
                           IsFaulty isFaulty) {
  LintFindings findings;
  const auto& places = subject.building().places;
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (!isFaulty(i)) continue;
    LintFinding finding = placeFinding(places[i]);
    finding.severity = severity;
    for (const std::size_t node : subject.placeNodes()[i].arrival) {
      finding.nodes.push_back(subject.building().nodes[node].id);
    }
    finding.message = placeWords(places[i]) + ' ' + what;
    findings.push_back(std::move(finding));
  }
  return findings;
}

bool isReached(LintSubject& subject, std::size_t place) {
  return anyOf(subject.placeNodes()[place].arrival, subject.reach().reached);
}

bool isLeft(LintSubject& subject, std::size_t place) {
  return anyOf(subject.placeNodes()[place].departure, subject.reach().leaving);
}

/// For every node two of the entrances, if there are two, that ways without barriers join it to:
/// that lead from the entrance to the node, or back. Two are enough to tell whether a place is
/// joined to another entrance than itself.
class EntrancesOfNodes {
 public:
  /// The neighbours at which a way goes on, as `WalkGraph::after` or `WalkGraph::before`.
  using Neighbours = const NodeIndexes& (WalkGraph::*)(std::size_t) const;

  EntrancesOfNodes(const WalkGraph& ways, Neighbours neighbours)
      : ways_(ways), neighbours_(neighbours), entrances_(ways.size()) {}

  /// Goes on from an entrance, whose own nodes are given.
  void addEntrance(std::size_t entrance, const NodeIndexes& nodes) {
    for (const std::size_t node : nodes) visit(node, entrance);
    while (!waiting_.empty()) {
      const std::size_t node = waiting_.back();
      waiting_.pop_back();
      for (const std::size_t neighbour : (ways_.*neighbours_)(node)) visit(neighbour, entrance);
    }
  }

  /// Whether one of the nodes is joined to an entrance, that one left aside.
  bool isAnyJoined(const NodeIndexes& nodes, std::size_t except) const {
    return std::any_of(nodes.begin(), nodes.end(), [&](std::size_t node) {
      const auto& entrances = entrances_[node];
      return std::any_of(entrances.begin(), entrances.end(),
                         [&](std::size_t entrance) { return entrance != except; });
    });
  }

 private:
  void visit(std::size_t node, std::size_t entrance) {
    auto& entrances = entrances_[node];
    if (entrances.size() == 2 || (!entrances.empty() && entrances.front() == entrance)) return;
    entrances.push_back(entrance);
    waiting_.push_back(node);
  }

  const WalkGraph& ways_;
  const Neighbours neighbours_;
  std::vector<NodeIndexes> entrances_;  ///< by node
  NodeIndexes waiting_;
};

/// Who gets where without barriers, seen from the entrances: it does not help that a storey can be
/// crossed when nobody gets up there. A building whose entrances are not mapped, or lie apart, is
/// seen from the largest part within which there are no barriers.
class BarrierFreeReach {
 public:
  explicit BarrierFreeReach(LintSubject& subject)
      : subject_(subject),
        isEntrance_(subject.building().places.size(), false),
        fromMain_(ways().reachedFrom(ways().mainNetwork())),
        toMain_(ways().leadingTo(ways().mainNetwork())),
        fromEntrances_(ways(), &WalkGraph::after),
        toEntrances_(ways(), &WalkGraph::before) {
    const auto& places = subject.building().places;
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (!places[i].entrance || !isReached(subject, i) || !isLeft(subject, i)) continue;
      ++entranceCount_;
      isEntrance_[i] = true;
      fromEntrances_.addEntrance(i, subject.placeNodes()[i].departure);
      toEntrances_.addEntrance(i, subject.placeNodes()[i].arrival);
    }
  }

  bool hasEntrances() const { return entranceCount_ > 0; }

  bool reaches(std::size_t place) const {
    return isJoined(place, subject_.placeNodes()[place].arrival, fromMain_, fromEntrances_);
  }

  /// Whether those who are there get back.
  bool leadsBack(std::size_t place) const {
    return isJoined(place, subject_.placeNodes()[place].departure, toMain_, toEntrances_);
  }

 private:
  bool isJoined(std::size_t place, const NodeIndexes& nodes, const NodeSet& main,
                const EntrancesOfNodes& entrances) const {
    if (!hasEntrances()) return anyOf(nodes, main);
    // An entrance is not reached by being there: from another one, or from the main part.
    if (isEntrance_[place] && (entranceCount_ == 1 || anyOf(nodes, main))) return true;
    return entrances.isAnyJoined(nodes, place);
  }

  const WalkGraph& ways() const { return subject_.barrierFreeWays(); }

  LintSubject& subject_;
  std::size_t entranceCount_ = 0;
  std::vector<bool> isEntrance_;  ///< by place
  NodeSet fromMain_;
  NodeSet toMain_;
  EntrancesOfNodes fromEntrances_;
  EntrancesOfNodes toEntrances_;
};

}  // namespace

LintFindings findPlacesOnEmptyLevels(LintSubject& subject) {
  return placeFindings(
      subject, LintSeverity::error,
      "is on a level without nodes: map the ways of that level, or mend the place's level.",
      [&](std::size_t i) { return !subject.hasNodes(subject.building().places[i].level); });
}

LintFindings findPlacesOutOfSight(LintSubject& subject) {
  return placeFindings(
      subject, LintSeverity::error,
      "sees no node: put a node into its room, or leave gaps in the walls for the doors.",
      [&](std::size_t i) {
        return subject.hasNodes(subject.building().places[i].level) &&
               subject.placeNodes()[i].arrival.empty();
      });
}

LintFindings findUnreachablePlaces(LintSubject& subject) {
  return placeFindings(
      subject, LintSeverity::error,
      "cannot be reached from the main network: join the nodes that it sees to the rest.",
      [&](std::size_t i) {
        return !subject.placeNodes()[i].arrival.empty() && !isReached(subject, i);
      });
}

LintFindings findPlacesWithoutWayOut(LintSubject& subject) {
  return placeFindings(subject, LintSeverity::error,
                       "can be reached, but no way leads from it into the main network: join the "
                       "node nearest to it to the rest.",
                       [&](std::size_t i) { return isReached(subject, i) && !isLeft(subject, i); });
}

LintFindings findPlacesWithBarriers(LintSubject& subject) {
  const BarrierFreeReach barrierFree(subject);
  const std::string origin =
      barrierFree.hasEntrances() ? "any entrance" : "the main barrier-free network";
  LintFindings findings = placeFindings(
      subject, LintSeverity::warning,
      "cannot be reached without barriers from " + origin +
          ": map a lift or ramp that leads there.",
      [&](std::size_t i) { return isReached(subject, i) && !barrierFree.reaches(i); });
  LintFindings traps = placeFindings(
      subject, LintSeverity::warning,
      "can be reached without barriers, but not left again to " + origin +
          ": map a lift or ramp that leads back, or look for an edge that should not be one-way.",
      [&](std::size_t i) {
        return isReached(subject, i) && isLeft(subject, i) && barrierFree.reaches(i) &&
               !barrierFree.leadsBack(i);
      });
  std::move(traps.begin(), traps.end(), std::back_inserter(findings));
  std::stable_sort(findings.begin(), findings.end(),
                   [](const LintFinding& one, const LintFinding& two) {
                     return one.features.front() < two.features.front();
                   });
  return findings;
}

}  // namespace KorvaniTools
