#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "Lint/Checks.hpp"
#include "Lint/LintSubject.hpp"

namespace KorvaniTools {
namespace {

constexpr std::size_t kNoGroup = std::numeric_limits<std::size_t>::max();

/// Groups of nodes that do not hang together with the main network, on their way to findings.
class GroupFindings {
 public:
  GroupFindings(LintSubject& subject, const NodeSet& members)
      : subject_(subject), groupOf_(subject.building().nodes.size(), kNoGroup) {
    for (const NodeIndexes& group : subject.ways().groupsOf(members)) addGroup(group);
    addEdges();
    addPlaces();
  }

  /// The findings; `what` and `mend` tell what is wrong and what to do about it.
  LintFindings worded(const std::string& what, const std::string& mend) && {
    for (LintFinding& finding : findings_) {
      finding.severity = finding.names.empty() ? LintSeverity::warning : LintSeverity::error;
      finding.message = subjectWords(finding);
      finding.message.append(" ").append(what).append(placesWords(finding));
      finding.message.append(": ").append(mend);
    }
    return std::move(findings_);
  }

 private:
  void addGroup(const NodeIndexes& group) {
    LintFinding finding;
    for (const std::size_t index : group) {
      const BuildingNode& node = subject_.building().nodes[index];
      groupOf_[index] = findings_.size();
      addLevel(finding, node.level);
      finding.at.push_back(node.coordinate);
      finding.nodes.push_back(node.id);
      finding.features.push_back(node.feature);
    }
    findings_.push_back(std::move(finding));
  }

  /// The edges of a group, and those that join it to the rest, which are where the fault may be.
  void addEdges() {
    for (const BuildingEdge& edge : subject_.building().edges) {
      const std::size_t from = subject_.indexOf(edge.from);
      const std::size_t to = subject_.indexOf(edge.to);
      const std::size_t group = groupOf_[from] != kNoGroup ? groupOf_[from] : groupOf_[to];
      if (group == kNoGroup || from == to) continue;
      LintFinding& finding = findings_[group];
      finding.edges.push_back({edge.from, edge.to});
      finding.lines.push_back(
          {subject_.building().nodes[from].coordinate, subject_.building().nodes[to].coordinate});
    }
  }

  void addPlaces() {
    if (findings_.empty()) return;
    const auto& placeNodes = subject_.placeNodes();
    for (std::size_t i = 0; i < placeNodes.size(); ++i) {
      for (const std::size_t group : groupsOf(placeNodes[i])) {
        addPlace(findings_[group], subject_.building().places[i]);
      }
    }
  }

  /// The groups that keep a place from being reached or left.
  std::set<std::size_t> groupsOf(const PlaceNodes& place) {
    const Reach& reach = subject_.reach();
    std::set<std::size_t> groups;
    if (!place.arrival.empty() && !anyOf(place.arrival, reach.reached)) {
      groups.insert(groupOf_[place.arrival.front()]);
    }
    if (!place.departure.empty() && !anyOf(place.departure, reach.leaving)) {
      groups.insert(groupOf_[place.departure.front()]);
    }
    groups.erase(kNoGroup);
    return groups;
  }

  static std::string levelsWords(const LintFinding& finding) {
    std::vector<std::string> levels;
    levels.reserve(finding.levels.size());
    for (const std::int64_t level : finding.levels) levels.push_back(std::to_string(level));
    return (levels.size() == 1 ? "level " : "levels ") + listWords(levels);
  }

  static std::string subjectWords(const LintFinding& finding) {
    const std::string node = std::to_string(finding.nodes.front());
    if (finding.nodes.size() == 1) return "Node " + node + " of " + levelsWords(finding);
    return "A part of " + std::to_string(finding.nodes.size()) + " nodes on " +
           levelsWords(finding) + " (with node " + node + ')';
  }

  static std::string placesWords(const LintFinding& finding) {
    if (finding.names.empty()) return "";
    std::vector<std::string> names;
    names.reserve(finding.names.size());
    for (const std::string& name : finding.names) names.push_back('"' + name + '"');
    return ", and with it " + listWords(names);
  }

  LintSubject& subject_;
  std::vector<std::size_t> groupOf_;  ///< by node
  LintFindings findings_;
};

/// The nodes that are missing in `present`, in the part of the building that edges join to the main
/// network in whatever direction, or in the other parts.
NodeSet missingIn(LintSubject& subject, const NodeSet& present, bool joined) {
  NodeSet nodes(present.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    nodes[i] = !present[i] && subject.reach().joined[i] == joined;
  }
  return nodes;
}

/// The extent of what there is on every level.
struct LevelExtent {
  Rectangle rectangle;
  bool hasNodes = false;
  bool isConnected = false;
};

std::map<std::int64_t, LevelExtent> levelExtents(const LintSubject& subject) {
  const Building& building = subject.building();
  std::map<std::int64_t, LevelExtent> levels;
  for (const BuildingNode& node : building.nodes) {
    levels[node.level].rectangle.include(node.coordinate);
    levels[node.level].hasNodes = true;
  }
  for (const BuildingObstacle& obstacle : building.obstacles) {
    for (const ObstacleLine& line : obstacle.lines) {
      for (const Coordinate at : line.positions) levels[obstacle.level].rectangle.include(at);
    }
  }
  for (const Room& room : building.rooms) {
    for (const auto& ring : room.rings) {
      for (const Coordinate at : ring) levels[room.level].rectangle.include(at);
    }
  }
  for (const Place& place : building.places)
    levels[place.level].rectangle.include(place.coordinate);
  for (const BuildingEdge& edge : building.edges) {
    const std::int64_t from = subject.node(edge.from).level;
    const std::int64_t to = subject.node(edge.to).level;
    if (from != to) levels[from].isConnected = levels[to].isConnected = true;
  }
  return levels;
}

LintFinding levelFinding(const LintSubject& subject, std::int64_t level,
                         const LevelExtent& extent) {
  LintFinding finding;
  finding.severity = extent.hasNodes ? LintSeverity::error : LintSeverity::warning;
  finding.levels = {level};
  finding.area = extent.rectangle;
  const Coordinate southWest = extent.rectangle.southWest;
  const Coordinate northEast = extent.rectangle.northEast;
  finding.at = {{(southWest.latitude + northEast.latitude) / 2,
                 (southWest.longitude + northEast.longitude) / 2}};
  std::string words = subject.levels().words(level);
  words.front() = 'L';
  finding.message =
      words + (extent.hasNodes
                   ? " has no way to any other level: map its stairs, lifts or ramps."
                   : " has no nodes, so nobody can be guided there: map its ways, or remove it.");
  return finding;
}

}  // namespace

LintFindings findIslands(LintSubject& subject) {
  return GroupFindings(subject, missingIn(subject, subject.reach().reached, false))
      .worded("is not joined to the main network", "join it, or remove it.");
}

LintFindings findOneWayTraps(LintSubject& subject) {
  return GroupFindings(subject, missingIn(subject, subject.reach().leaving, true))
      .worded("has no way back into the main network",
              "add one, or look for an edge that should not be one-way.");
}

LintFindings findPartsWithoutWayIn(LintSubject& subject) {
  return GroupFindings(subject, missingIn(subject, subject.reach().reached, true))
      .worded("cannot be entered from the main network",
              "add a way in, or look for an edge that should not be one-way.");
}

LintFindings findUnconnectedLevels(LintSubject& subject) {
  const auto levels = levelExtents(subject);
  const auto withNodes = std::count_if(levels.begin(), levels.end(),
                                       [](const auto& entry) { return entry.second.hasNodes; });
  LintFindings findings;
  for (const auto& [level, extent] : levels) {
    const bool isTheOnlyOne = extent.hasNodes && withNodes == 1;
    if (extent.isConnected || isTheOnlyOne) continue;
    findings.push_back(levelFinding(subject, level, extent));
  }
  return findings;
}

}  // namespace KorvaniTools
