#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <unordered_map>
#include <utility>

#include "Lint/Checks.hpp"
#include "Lint/LintSubject.hpp"
#include "Platform/Location.hpp"

namespace KorvaniTools {
namespace {

using KorvaniPlatform::greatCircleDistance;
using KorvaniPlatform::radians;

/// Nodes by small cubes of space, which have the same size everywhere on the globe.
class NodeCubes {
 public:
  NodeCubes(const Building& building, double nearness)
      : building_(building), nearness_(nearness), side_(std::max(nearness, kSmallestSide)) {}

  /// The earliest node, among those added, of the same level and near that one; none without.
  std::optional<std::size_t> earliestNear(std::size_t node) const {
    const Cube cube = cubeOf(node);
    std::optional<std::size_t> earliest;
    for (int i = 0; i < 27; ++i) {
      const Cube other{cube[0] + i % 3 - 1, cube[1] + i / 3 % 3 - 1, cube[2] + i / 9 - 1, cube[3]};
      const auto found = nodes_.find(other);
      if (found == nodes_.end()) continue;
      for (const std::size_t candidate : found->second) {
        if (earliest && *earliest <= candidate) break;
        if (isNear(node, candidate)) earliest = candidate;
      }
    }
    return earliest;
  }

  void add(std::size_t node) { nodes_[cubeOf(node)].push_back(node); }

 private:
  using Cube = std::array<std::int64_t, 4>;

  struct CubeHash {
    std::size_t operator()(const Cube& cube) const {
      std::uint64_t hash = 0;
      for (const std::int64_t part : cube) {
        hash = (hash ^ static_cast<std::uint64_t>(part)) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 32U;
      }
      return static_cast<std::size_t>(hash);
    }
  };

  static constexpr double kSmallestSide = 0.001;

  Cube cubeOf(std::size_t node) const {
    const Coordinate at = building_.nodes[node].coordinate;
    const double latitude = radians(at.latitude);
    const double longitude = radians(at.longitude);
    const auto part = [this](double share) {
      return static_cast<std::int64_t>(std::floor(share * KorvaniPlatform::kEarthRadius / side_));
    };
    return {part(std::cos(latitude) * std::cos(longitude)),
            part(std::cos(latitude) * std::sin(longitude)), part(std::sin(latitude)),
            building_.nodes[node].level};
  }

  bool isNear(std::size_t a, std::size_t b) const {
    return greatCircleDistance(building_.nodes[a].coordinate, building_.nodes[b].coordinate) <=
           nearness_;
  }

  const Building& building_;
  double nearness_;
  double side_;
  std::unordered_map<Cube, NodeIndexes, CubeHash> nodes_;
};

LintFinding duplicateFinding(const Building& building, const NodeIndexes& group) {
  LintFinding finding;
  finding.severity = LintSeverity::warning;
  std::vector<std::string> ids;
  for (const std::size_t index : group) {
    const BuildingNode& node = building.nodes[index];
    addLevel(finding, node.level);
    finding.at.push_back(node.coordinate);
    finding.nodes.push_back(node.id);
    finding.features.push_back(node.feature);
    ids.push_back(std::to_string(node.id));
  }
  finding.message = "Nodes " + listWords(ids) + " of level " +
                    std::to_string(finding.levels.front()) +
                    " are in the same place: make them one, with the edges of all.";
  return finding;
}

}  // namespace

LintFindings findDuplicateNodes(LintSubject& subject) {
  const Building& building = subject.building();
  NodeCubes cubes(building, subject.options().sameNodeMetres);
  std::vector<NodeIndexes> groups;
  std::vector<std::size_t> groupOf;
  for (std::size_t node = 0; node < building.nodes.size(); ++node) {
    const auto earlier = cubes.earliestNear(node);
    groupOf.push_back(earlier ? groupOf[*earlier] : groups.size());
    if (!earlier) groups.emplace_back();
    groups[groupOf[node]].push_back(node);
    cubes.add(node);
  }
  LintFindings findings;
  for (const NodeIndexes& group : groups) {
    if (group.size() > 1) findings.push_back(duplicateFinding(building, group));
  }
  return findings;
}

}  // namespace KorvaniTools
