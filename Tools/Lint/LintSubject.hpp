#pragma once

/// Internal. A building that is looked at, with what several rules need to know of it.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "Building/Building.hpp"
#include "Lint/Lint.hpp"
#include "Lint/LintFinding.hpp"
#include "Lint/PlaceSight.hpp"
#include "Lint/WalkGraph.hpp"
#include "Support/LevelNames.hpp"

namespace KorvaniTools {

/// Which nodes hang together with the main network.
struct Reach {
  NodeSet reached;  ///< somebody in the main network gets there
  NodeSet leaving;  ///< somebody there gets into the main network
  NodeSet joined;   ///< edges join it to the main network, in whatever direction
};

/// Everything is worked out when it is first asked for, and kept.
///
/// One thread at a time. Refers to `building` and `options`.
class LintSubject {
 public:
  LintSubject(const Building& building, const LintOptions& options);

  const Building& building() const { return building_; }
  const LintOptions& options() const { return options_; }
  const LevelNames& levels() const { return levels_; }

  std::size_t indexOf(std::int64_t nodeId) const { return indexes_.at(nodeId); }
  const BuildingNode& node(std::int64_t id) const { return building_.nodes[indexOf(id)]; }

  const WalkGraph& ways();
  const WalkGraph& barrierFreeWays();
  const Reach& reach();
  PlaceSight& sight();

  /// The nodes of every place, in the order of the places. Those on a level without nodes have
  /// none, though the engine maps them onto other levels.
  const std::vector<PlaceNodes>& placeNodes();

  /// Whether there is a node on that level.
  bool hasNodes(std::int64_t level) const { return nodesOfLevel_.contains(level); }

 private:
  const Building& building_;
  const LintOptions& options_;
  LevelNames levels_;
  std::unordered_map<std::int64_t, std::size_t> indexes_;
  std::unordered_map<std::int64_t, std::size_t> nodesOfLevel_;
  std::optional<WalkGraph> ways_;
  std::optional<WalkGraph> barrierFreeWays_;
  std::optional<Reach> reach_;
  std::optional<PlaceSight> sight_;
  std::optional<std::vector<PlaceNodes>> placeNodes_;
};

/// Whether one of `nodes` is in `set`.
bool anyOf(const NodeIndexes& nodes, const NodeSet& set);

/// A finding about one edge: its level or levels, its line, its ids and its feature.
LintFinding edgeFinding(const LintSubject& subject, const BuildingEdge& edge);

/// A finding about one node.
LintFinding nodeFinding(const BuildingNode& node);

/// A finding about one place.
LintFinding placeFinding(const Place& place);

/// Adds a place's name, its feature and where it comes from.
void addPlace(LintFinding& finding, const Place& place);

/// Adds levels; they stay ascending, each once.
void addLevel(LintFinding& finding, std::int64_t level);

/// "Edge 12-13", "Node 12", "Place \"Desk\" of level 2 (feature 7, way/12)", to begin a sentence
/// with.
std::string edgeWords(const BuildingEdge& edge);
std::string nodeWords(std::int64_t id);
std::string placeWords(const Place& place);

/// "feature 7", "features 7 and 9", "features 7, 8, 9 and 20 more".
std::string featureWords(const std::vector<std::size_t>& features);

/// A list for a sentence: "a", "a and b", "a, b, c and 5 more".
std::string listWords(const std::vector<std::string>& words);

/// A length in metres with two decimals: "3.25 m"; from 1000 km on without.
std::string exactMetres(double distance);

}  // namespace KorvaniTools
