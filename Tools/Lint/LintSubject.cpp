#include "Lint/LintSubject.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "Support/Text.hpp"

namespace KorvaniTools {

LintSubject::LintSubject(const Building& building, const LintOptions& options)
    : building_(building), options_(options), levels_(building), indexes_(nodeIndexes(building)) {
  for (const BuildingNode& node : building.nodes) ++nodesOfLevel_[node.level];
}

const WalkGraph& LintSubject::ways() {
  if (!ways_) ways_.emplace(building_, WalkGraph::Edges::all);
  return *ways_;
}

const WalkGraph& LintSubject::barrierFreeWays() {
  if (!barrierFreeWays_) barrierFreeWays_.emplace(building_, WalkGraph::Edges::barrierFree);
  return *barrierFreeWays_;
}

const Reach& LintSubject::reach() {
  if (!reach_) {
    const NodeSet main = ways().mainNetwork();
    reach_ = Reach{ways().reachedFrom(main), ways().leadingTo(main), ways().joinedTo(main)};
  }
  return *reach_;
}

PlaceSight& LintSubject::sight() {
  if (!sight_) sight_.emplace(building_);
  return *sight_;
}

const std::vector<PlaceNodes>& LintSubject::placeNodes() {
  if (!placeNodes_) {
    placeNodes_.emplace();
    for (const Place& place : building_.places) {
      placeNodes_->push_back(hasNodes(place.level) ? sight().nodesFor(place.coordinate, place.level)
                                                   : PlaceNodes{});
    }
  }
  return *placeNodes_;
}

namespace {

/// What an importer made the place of; empty when it does not say.
std::string sourceOf(const Place& place) {
  const auto found = place.further.find("source");
  if (found == place.further.end() || !found->is_string()) return "";
  return found->get<std::string>();
}

}  // namespace

bool anyOf(const NodeIndexes& nodes, const NodeSet& set) {
  return std::any_of(nodes.begin(), nodes.end(), [&](std::size_t node) { return set[node]; });
}

LintFinding edgeFinding(const LintSubject& subject, const BuildingEdge& edge) {
  const BuildingNode& from = subject.node(edge.from);
  const BuildingNode& to = subject.node(edge.to);
  LintFinding finding;
  addLevel(finding, from.level);
  addLevel(finding, to.level);
  finding.at = {from.coordinate};
  finding.lines = {{from.coordinate, to.coordinate}};
  finding.nodes = {edge.from, edge.to};
  finding.edges = {{edge.from, edge.to}};
  finding.features = {edge.feature};
  return finding;
}

LintFinding nodeFinding(const BuildingNode& node) {
  LintFinding finding;
  addLevel(finding, node.level);
  finding.at = {node.coordinate};
  finding.nodes = {node.id};
  finding.features = {node.feature};
  return finding;
}

LintFinding placeFinding(const Place& place) {
  LintFinding finding;
  addLevel(finding, place.level);
  finding.at = {place.coordinate};
  addPlace(finding, place);
  return finding;
}

void addPlace(LintFinding& finding, const Place& place) {
  finding.features.push_back(place.feature);
  finding.names.push_back(place.name);
  const std::string source = sourceOf(place);
  if (!source.empty()) finding.sources.push_back(source);
}

void addLevel(LintFinding& finding, std::int64_t level) {
  const auto at = std::lower_bound(finding.levels.begin(), finding.levels.end(), level);
  if (at == finding.levels.end() || *at != level) finding.levels.insert(at, level);
}

std::string edgeWords(const BuildingEdge& edge) {
  return "Edge " + std::to_string(edge.from) + '-' + std::to_string(edge.to);
}

std::string nodeWords(std::int64_t id) { return "Node " + std::to_string(id); }

std::string placeWords(const Place& place) {
  const std::string source = sourceOf(place);
  return "Place \"" + place.name + "\" of level " + std::to_string(place.level) + " (" +
         featureWords({place.feature}) + (source.empty() ? "" : ", " + source) + ')';
}

std::string featureWords(const std::vector<std::size_t>& features) {
  std::vector<std::string> words;
  words.reserve(features.size());
  for (const std::size_t feature : features) words.push_back(std::to_string(feature));
  return (features.size() == 1 ? "feature " : "features ") + listWords(words);
}

std::string listWords(const std::vector<std::string>& words) {
  constexpr std::size_t kNamed = 3;
  // Naming the fourth is as short as counting it.
  const std::size_t named = words.size() <= kNamed + 1 ? words.size() : kNamed;
  std::string text;
  for (std::size_t i = 0; i < named; ++i) {
    const bool last = i + 1 == words.size();
    text += (i == 0 ? "" : last ? " and " : ", ") + words[i];
  }
  if (named < words.size()) text += " and " + std::to_string(words.size() - named) + " more";
  return text;
}

std::string exactMetres(double distance) {
  constexpr double kFar = 1e6;
  if (distance >= kFar) return metres(distance);
  std::array<char, 400> buffer{};
  std::snprintf(buffer.data(), buffer.size(), "%.2f m", distance);
  return buffer.data();
}

}  // namespace KorvaniTools
