#include <algorithm>
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
    finding.message =
        placeWords(places[i].name) + " of level " + std::to_string(places[i].level) + ' ' + what;
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

/// For every node two of the entrances, if there are two, from which it is reached without
/// barriers. Two are enough to tell whether a place is reached from another entrance than itself.
class EntrancesOfNodes {
 public:
  explicit EntrancesOfNodes(const WalkGraph& ways) : ways_(ways), origins_(ways.size()) {}

  /// Goes on from an entrance whose routes start at `departure`.
  void addEntrance(std::size_t entrance, const NodeIndexes& departure) {
    for (const std::size_t node : departure) visit(node, entrance);
    while (!waiting_.empty()) {
      const std::size_t node = waiting_.back();
      waiting_.pop_back();
      for (const std::size_t neighbour : ways_.after(node)) visit(neighbour, entrance);
    }
  }

  /// Whether one of the nodes is reached from an entrance, that one left aside.
  bool isAnyReached(const NodeIndexes& nodes, std::size_t exceptFrom) const {
    return std::any_of(nodes.begin(), nodes.end(), [&](std::size_t node) {
      const auto& origins = origins_[node];
      return std::any_of(origins.begin(), origins.end(),
                         [&](std::size_t origin) { return origin != exceptFrom; });
    });
  }

 private:
  void visit(std::size_t node, std::size_t entrance) {
    auto& origins = origins_[node];
    if (origins.size() == 2 || (!origins.empty() && origins.front() == entrance)) return;
    origins.push_back(entrance);
    waiting_.push_back(node);
  }

  const WalkGraph& ways_;
  std::vector<NodeIndexes> origins_;  ///< by node
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
        fromEntrances_(ways()) {
    const auto& places = subject.building().places;
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (!places[i].entrance || !isReached(subject, i) || !isLeft(subject, i)) continue;
      ++entranceCount_;
      isEntrance_[i] = true;
      fromEntrances_.addEntrance(i, subject.placeNodes()[i].departure);
    }
  }

  bool hasEntrances() const { return entranceCount_ > 0; }

  bool reaches(std::size_t place) const {
    const NodeIndexes& arrival = subject_.placeNodes()[place].arrival;
    if (!hasEntrances()) return anyOf(arrival, fromMain_);
    // An entrance is not reached by being there: from another one, or from the main part.
    if (isEntrance_[place] && (entranceCount_ == 1 || anyOf(arrival, fromMain_))) return true;
    return fromEntrances_.isAnyReached(arrival, place);
  }

 private:
  const WalkGraph& ways() const { return subject_.barrierFreeWays(); }

  LintSubject& subject_;
  std::size_t entranceCount_ = 0;
  std::vector<bool> isEntrance_;  ///< by place
  NodeSet fromMain_;
  EntrancesOfNodes fromEntrances_;
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
      barrierFree.hasEntrances() ? "from any entrance" : "from the main barrier-free network";
  return placeFindings(
      subject, LintSeverity::warning,
      "cannot be reached without barriers " + origin + ": map a lift or ramp that leads there.",
      [&](std::size_t i) { return isReached(subject, i) && !barrierFree.reaches(i); });
}

}  // namespace KorvaniTools
