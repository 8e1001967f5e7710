#include "FloorPlan/LineLevels.hpp"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <utility>

#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

using Levels = std::vector<std::int64_t>;

// How much each sort of evidence counts; a stronger sort outweighs all weaker ones together.
constexpr int kMeetsLine = 64;
constexpr int kMeetsOpenLine = 16;  // a line that may be on that level, as far as is known yet
constexpr int kMeetsCell = 5;
constexpr int kIncline = 2;

/// A line that leads from level to level, and the evidence for its ends.
class Climb {
 public:
  Climb(const PlanLine& line, Levels levels) : line_(&line), levels_(std::move(levels)) {}

  const PlanLine& line() const { return *line_; }
  const Levels& levels() const { return levels_; }
  bool may(std::int64_t level) const {
    return std::binary_search(levels_.begin(), levels_.end(), level);
  }

  struct Choice {
    std::int64_t first = 0;
    std::int64_t last = 0;
    int score = 0;
    bool certain = false;  ///< no other choice has as much evidence
  };

  /// The ends with the most evidence; of equals the longest climb from the first vertex up.
  Choice choose(const std::map<std::int64_t, int>& first,
                const std::map<std::int64_t, int>& last) const {
    Choice best;
    best.score = -1;
    for (const std::int64_t a : levels_) {
      for (const std::int64_t b : levels_) {
        if (a == b) continue;
        const int score = weight(first, a) + weight(last, b) + inclineWeight(a, b);
        if (score == best.score && span(a, b) == span(best.first, best.last)) best.certain = false;
        if (score < best.score) continue;
        if (score == best.score && span(a, b) <= span(best.first, best.last)) continue;
        best = {a, b, score, true};
      }
    }
    return best;
  }

 private:
  static int weight(const std::map<std::int64_t, int>& evidence, std::int64_t level) {
    const auto found = evidence.find(level);
    return found == evidence.end() ? 0 : found->second;
  }
  int inclineWeight(std::int64_t a, std::int64_t b) const {
    return line_->incline != 0 && (b > a) == (line_->incline > 0) ? kIncline : 0;
  }
  static std::int64_t span(std::int64_t a, std::int64_t b) { return std::abs(b - a); }

  const PlanLine* line_;
  Levels levels_;
};

class Resolver {
 public:
  Resolver(const FloorPlan& plan, const PlanLevels& levels, const LevelsAround& around,
           std::vector<std::string>& remarks)
      : plan_(plan), planLevels_(levels), around_(around), remarks_(remarks) {}

  std::vector<std::vector<LineTrack>> tracks() {
    tracks_.resize(plan_.lines.size());
    placeFlatLines();
    placeShafts();
    placeClimbs();
    return std::move(tracks_);
  }

 private:
  using Evidence = std::map<std::int64_t, int>;

  void placeFlatLines() {
    for (std::size_t i = 0; i < plan_.lines.size(); ++i) {
      const PlanLine& line = plan_.lines[i];
      Levels levels = planLevels_.of(line.levels);
      if (levels.empty() || line.vertices.size() < 2) continue;
      if (levels.size() > 1 && line.kind != ConnectionKind::path) {
        climbs_.emplace(i, Climb(line, std::move(levels)));
      } else if (levels.size() > 1) {
        paths_.emplace(i, std::move(levels));
      } else {
        for (const PlanVertex& vertex : line.vertices) meet(vertex.node, levels.front());
        tracks_[i].push_back(LineTrack(line.vertices.size(), levels.front()));
      }
    }
    placePaths();
    for (const auto& [i, climb] : climbs_) {
      for (const PlanVertex& vertex : climb.line().vertices) {
        if (vertex.node != 0) open_[vertex.node].insert(i);
      }
    }
  }

  // A path on several levels is floor on each of them, unless each end meets one level only.
  void placePaths() {
    for (const auto& [i, levels] : paths_) {
      const PlanLine& line = plan_.lines[i];
      const auto first = only(levels, line.vertices.front().node);
      const auto last = only(levels, line.vertices.back().node);
      if (first && last && *first != *last) climbs_.emplace(i, Climb(line, levels));
    }
    for (const auto& [i, levels] : paths_) {
      if (climbs_.contains(i)) continue;
      const PlanLine& line = plan_.lines[i];
      for (const std::int64_t level : levels) {
        tracks_[i].push_back(LineTrack(line.vertices.size(), level));
      }
    }
    for (const auto& [i, levels] : paths_) {
      if (climbs_.contains(i)) continue;
      for (const PlanVertex& vertex : plan_.lines[i].vertices) {
        for (const std::int64_t level : levels) meet(vertex.node, level);
      }
    }
  }

  // Of a lift that stops there.
  void placeShafts() {
    for (const PlanShaft& shaft : plan_.shafts) {
      if (!shaft.vertex) continue;
      for (const std::int64_t level : planLevels_.of(shaft.levels)) {
        shafts_[shaft.vertex->node].insert(level);
      }
    }
  }

  // The best known first, since each that is placed tells about those it meets.
  void placeClimbs() {
    std::set<std::size_t> left;
    for (const auto& [i, climb] : climbs_) left.insert(i);
    for (const int needed : {2 * kMeetsLine, kMeetsLine, kMeetsOpenLine, kMeetsCell, 0}) {
      placeCertain(left, needed);
    }
    for (const std::size_t i : left) {
      const Climb& climb = climbs_.at(i);
      const Climb::Choice choice = chosen(climb);
      place(i, climb, choice);
      // Of stairs that end above their beginning either end may be the lower one.
      if (climb.line().vertices.front().node == climb.line().vertices.back().node) continue;
      remarks_.push_back(climb.line().source + " leads to several levels, and nothing tells " +
                         "which end is where: taken from level " +
                         decimals(planLevels_.source(choice.first)) + " to level " +
                         decimals(planLevels_.source(choice.last)));
    }
  }

  void placeCertain(std::set<std::size_t>& left, int needed) {
    bool again = true;
    while (again) {
      again = false;
      for (auto next = left.begin(); next != left.end();) {
        const Climb& climb = climbs_.at(*next);
        const Climb::Choice choice = chosen(climb);
        if (!choice.certain || choice.score < needed) {
          ++next;
          continue;
        }
        place(*next, climb, choice);
        next = left.erase(next);
        again = true;
      }
    }
  }

  Climb::Choice chosen(const Climb& climb) const {
    return climb.choose(evidence(climb, climb.line().vertices.front()),
                        evidence(climb, climb.line().vertices.back()));
  }

  Evidence evidence(const Climb& climb, const PlanVertex& end) const {
    Evidence evidence;
    const auto met = met_.find(end.node);
    if (met != met_.end()) {
      for (const std::int64_t level : met->second) evidence[level] = kMeetsLine;
    }
    const auto shafts = shafts_.find(end.node);
    if (end.node != 0 && shafts != shafts_.end()) {
      for (const std::int64_t level : shafts->second) evidence[level] += kMeetsCell;
    }
    addOpenLines(climb, end, evidence);
    for (const std::int64_t level : around(end.coordinate)) evidence[level] += kMeetsCell;
    return evidence;
  }

  void addOpenLines(const Climb& climb, const PlanVertex& end, Evidence& evidence) const {
    const auto open = open_.find(end.node);
    if (open == open_.end()) return;
    for (const std::size_t other : open->second) {
      const Climb& neighbour = climbs_.at(other);
      if (&neighbour == &climb || !tracks_[other].empty()) continue;
      for (const std::int64_t level : neighbour.levels()) {
        if (evidence[level] < kMeetsOpenLine) evidence[level] += kMeetsOpenLine;
      }
    }
  }

  const std::set<std::int64_t>& around(Coordinate coordinate) const {
    const std::pair key(coordinate.latitude, coordinate.longitude);
    const auto known = around_cache_.find(key);
    if (known != around_cache_.end()) return known->second;
    return around_cache_.emplace(key, around_(coordinate)).first->second;
  }

  void place(std::size_t i, const Climb& climb, const Climb::Choice& choice) {
    LineTrack track = levelsAlong(climb, choice);
    for (std::size_t k = 0; k < track.size(); ++k) meet(climb.line().vertices[k].node, track[k]);
    tracks_[i].push_back(std::move(track));
  }

  // Vertices that another line meets on a level in between hold that level; between two that are
  // held, the level changes in the middle.
  LineTrack levelsAlong(const Climb& climb, const Climb::Choice& choice) const {
    const std::vector<PlanVertex>& vertices = climb.line().vertices;
    std::vector<std::pair<std::size_t, std::int64_t>> held{{0, choice.first}};
    for (std::size_t k = 1; k + 1 < vertices.size(); ++k) {
      const auto level = levelBetween(climb, vertices[k].node, held.back().second, choice.last);
      if (level) held.emplace_back(k, *level);
    }
    held.emplace_back(vertices.size() - 1, choice.last);
    LineTrack track(vertices.size(), choice.first);
    for (std::size_t h = 0; h + 1 < held.size(); ++h) {
      const std::size_t middle = (held[h].first + held[h + 1].first + 1) / 2;
      for (std::size_t k = held[h].first; k <= held[h + 1].first; ++k) {
        track[k] = k < middle ? held[h].second : held[h + 1].second;
      }
    }
    return track;
  }

  std::optional<std::int64_t> levelBetween(const Climb& climb, std::int64_t node, std::int64_t from,
                                           std::int64_t to) const {
    const auto met = met_.find(node);
    if (node == 0 || met == met_.end()) return std::nullopt;
    std::optional<std::int64_t> result;
    for (const std::int64_t level : met->second) {
      if (!climb.may(level) || level < std::min(from, to) || level > std::max(from, to)) continue;
      if (result) return std::nullopt;
      result = level;
    }
    return result;
  }

  std::optional<std::int64_t> only(const Levels& levels, std::int64_t node) const {
    const auto met = met_.find(node);
    if (met == met_.end()) return std::nullopt;
    std::optional<std::int64_t> result;
    for (const std::int64_t level : met->second) {
      if (!std::binary_search(levels.begin(), levels.end(), level)) continue;
      if (result) return std::nullopt;
      result = level;
    }
    return result;
  }

  void meet(std::int64_t node, std::int64_t level) {
    if (node != 0) met_[node].insert(level);
  }

  const FloorPlan& plan_;
  const PlanLevels& planLevels_;
  const LevelsAround& around_;
  std::vector<std::string>& remarks_;
  std::vector<std::vector<LineTrack>> tracks_;
  std::map<std::size_t, Climb> climbs_;
  std::map<std::size_t, Levels> paths_;                    ///< on several levels
  std::map<std::int64_t, std::set<std::int64_t>> met_;     ///< levels of lines at a node
  std::map<std::int64_t, std::set<std::int64_t>> shafts_;  ///< where a lift at a node stops
  std::map<std::int64_t, std::set<std::size_t>> open_;     ///< climbs at a node
  mutable std::map<std::pair<double, double>, std::set<std::int64_t>> around_cache_;
};

}  // namespace

std::vector<std::vector<LineTrack>> lineTracks(const FloorPlan& plan, const PlanLevels& levels,
                                               const LevelsAround& around,
                                               std::vector<std::string>& remarks) {
  return Resolver(plan, levels, around, remarks).tracks();
}

}  // namespace KorvaniTools
