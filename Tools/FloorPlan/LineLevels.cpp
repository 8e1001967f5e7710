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
constexpr int kMeetsLine = 512;
constexpr int kIncline = 200;
constexpr int kMeetsClimb = 64;      // a line that leads to that level
constexpr int kMeetsOpenClimb = 16;  // one that may, as far as is known yet
constexpr int kMeetsCell = 5;

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
    int known = 0;         ///< the score without the incline
    bool certain = false;  ///< no other choice has as much evidence
  };

  /// Whether it ends above its beginning.
  bool comesBack() const {
    const std::int64_t node = line_->vertices.front().node;
    return node != 0 && node == line_->vertices.back().node;
  }

  /// Whether it begins and ends at the same two nodes as another one.
  bool sharesEndsWith(const Climb& other) const {
    const std::int64_t first = line_->vertices.front().node;
    const std::int64_t last = line_->vertices.back().node;
    if (first == 0 || last == 0) return false;
    const auto ends = std::minmax(first, last);
    return ends ==
           std::minmax(other.line_->vertices.front().node, other.line_->vertices.back().node);
  }

  /// Whether its incline leaves no choice but for lines on its levels.
  bool isTold() const { return levels_.size() == 2 && line_->incline != 0; }

  /// The level of the climb that all evidence for its own levels names; absent when there is none,
  /// or more than one.
  std::optional<std::int64_t> onlyLevel(const std::map<std::int64_t, int>& evidence) const {
    std::optional<std::int64_t> result;
    for (const auto& [level, weight] : evidence) {
      if (!may(level)) continue;
      if (result) return std::nullopt;
      result = level;
    }
    return result;
  }

  /// The ends with the most evidence; of equals the longest climb from the first vertex up.
  Choice choose(const std::map<std::int64_t, int>& first,
                const std::map<std::int64_t, int>& last) const {
    Choice best;
    best.score = -1;
    for (const std::int64_t a : levels_) {
      for (const std::int64_t b : levels_) {
        if (a == b) continue;
        const int known = weight(first, a) + weight(last, b);
        const int score = known + inclineWeight(a, b);
        if (score == best.score && span(a, b) == span(best.first, best.last)) best.certain = false;
        if (score < best.score) continue;
        if (score == best.score && span(a, b) <= span(best.first, best.last)) continue;
        best = {a, b, score, known, true};
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
    placeShafts();
    sortLines();
    placePaths();
    placeFlatStairs();
    findClimbs();
    placeClimbs();
    return std::move(tracks_);
  }

 private:
  using Evidence = std::map<std::int64_t, int>;

  void sortLines() {
    for (std::size_t i = 0; i < plan_.lines.size(); ++i) {
      const PlanLine& line = plan_.lines[i];
      Levels levels = planLevels_.of(line.levels);
      if (levels.empty() || line.vertices.size() < 2) continue;
      if (levels.size() > 1) {
        addTall(i, std::move(levels));
      } else if (isStairs(line.kind)) {
        flatStairs_.emplace(i, levels.front());
      } else {
        placeOn(i, levels.front());
      }
    }
  }

  /// Sorts in a line on several levels.
  void addTall(std::size_t i, Levels levels) {
    const PlanLine& line = plan_.lines[i];
    if (line.kind == ConnectionKind::path && line.incline == 0) {
      paths_.emplace(i, std::move(levels));
    } else {
      climbs_.emplace(i, Climb(line, std::move(levels)));
    }
  }

  static bool isStairs(ConnectionKind kind) {
    return kind == ConnectionKind::stairs || kind == ConnectionKind::escalator ||
           kind == ConnectionKind::ladder;
  }

  void placeOn(std::size_t i, std::int64_t level) {
    const PlanLine& line = plan_.lines[i];
    for (const PlanVertex& vertex : line.vertices) {
      if (vertex.node != 0) level_[vertex.node].insert(level);
      meet(vertex.node, level);
    }
    tracks_[i].push_back(LineTrack(line.vertices.size(), level));
  }

  // All of them before any is placed: what a path may be on tells nothing about the next one.
  void placePaths() {
    for (const auto& [i, levels] : paths_) {
      const PlanLine& line = plan_.lines[i];
      const auto first = only(levels, line.vertices.front());
      const auto last = only(levels, line.vertices.back());
      if (first && last && *first != *last) climbs_.emplace(i, Climb(line, levels));
    }
    for (const auto& [i, levels] : paths_) {
      if (climbs_.contains(i)) continue;
      for (const std::int64_t level : levels) placeOn(i, level);
    }
  }

  // All ends before any is placed, so that their order does not matter.
  void placeFlatStairs() {
    for (const auto& [i, level] : flatStairs_) {
      const PlanLine& line = plan_.lines[i];
      const std::int64_t first = levelAt(line.vertices.front(), level);
      const std::int64_t last = levelAt(line.vertices.back(), level);
      if (first == last || (first != level && last != level)) continue;
      climbs_.emplace(i, Climb(line, {std::min(first, last), std::max(first, last)}));
      remarks_.push_back(line.source + " is drawn on " + named(level) +
                         " alone and meets another level at an end: taken to lead to " +
                         named(first == level ? last : first));
    }
    for (const auto& [i, level] : flatStairs_) {
      if (!climbs_.contains(i)) placeOn(i, level);
    }
  }

  /// The level of stairs at an end: their own, unless only lines of one other level are there.
  std::int64_t levelAt(const PlanVertex& end, std::int64_t own) const {
    const auto met = met_.find(end.node);
    if (end.node == 0 || met == met_.end() || met->second.size() != 1) return own;
    return around(end.coordinate).floor.contains(own) ? own : *met->second.begin();
  }

  std::string named(std::int64_t level) const {
    return "level " + decimals(planLevels_.source(level));
  }

  void findClimbs() {
    for (const auto& [i, climb] : climbs_) {
      for (const PlanVertex& vertex : climb.line().vertices) {
        if (vertex.node != 0) climbsAt_[vertex.node].insert(i);
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
    for (const int needed : {2 * kMeetsLine, kMeetsLine, 2 * kMeetsClimb, kMeetsClimb,
                             kMeetsOpenClimb, kMeetsCell, 0}) {
      placeCertain(left, needed);
    }
    for (const std::size_t i : left) {
      const Climb& climb = climbs_.at(i);
      const Climb::Choice choice = chosen(i, climb);
      place(i, climb, choice);
      // Of stairs that end above their beginning either end may be the lower one.
      if (climb.comesBack()) continue;
      remarks_.push_back(climb.line().source + " leads to several levels, and nothing tells " +
                         "which end is where: taken from " + named(choice.first) + " to " +
                         named(choice.last));
    }
  }

  void placeCertain(std::set<std::size_t>& left, int needed) {
    bool again = true;
    while (again) {
      again = false;
      for (auto next = left.begin(); next != left.end();) {
        const Climb& climb = climbs_.at(*next);
        const Climb::Choice choice = chosen(*next, climb);
        if (!choice.certain || (!climb.isTold() && choice.known < needed)) {
          ++next;
          continue;
        }
        place(*next, climb, choice);
        next = left.erase(next);
        again = true;
      }
    }
  }

  Climb::Choice chosen(std::size_t i, const Climb& climb) const {
    const Evidence first = evidence(i, climb.line().vertices.front());
    const Evidence last = evidence(i, climb.line().vertices.back());
    const auto level = climb.onlyLevel(first);
    const bool flat = level && level == climb.onlyLevel(last) && !climb.comesBack();
    const int weight = flat ? std::min(first.at(*level), last.at(*level)) : 0;
    if (weight >= (climb.line().incline != 0 ? kMeetsLine : kMeetsClimb)) {
      return {*level, *level, 2 * weight, 2 * weight, true};
    }
    return climb.choose(first, last);
  }

  Evidence evidence(std::size_t i, const PlanVertex& end) const {
    Evidence evidence;
    if (const auto lines = level_.find(end.node); lines != level_.end()) {
      for (const std::int64_t level : lines->second) evidence[level] = kMeetsLine;
    }
    const auto shafts = shafts_.find(end.node);
    if (end.node != 0 && shafts != shafts_.end()) {
      for (const std::int64_t level : shafts->second) evidence[level] += kMeetsCell;
    }
    addClimbs(i, end, evidence);
    for (const std::int64_t level : around(end.coordinate).told) evidence[level] += kMeetsCell;
    return evidence;
  }

  void addClimbs(std::size_t i, const PlanVertex& end, Evidence& evidence) const {
    const auto here = climbsAt_.find(end.node);
    if (here == climbsAt_.end()) return;
    for (const std::size_t other : here->second) {
      if (other == i) continue;
      const bool placed = !tracks_[other].empty();
      const int weight = placed ? kMeetsClimb : kMeetsOpenClimb;
      const Climb& neighbour = climbs_.at(other);
      for (const std::int64_t level : placed ? levelsAt(other, end.node) : neighbour.levels()) {
        if (evidence[level] >= weight || isStacked(climbs_.at(i), neighbour, level)) continue;
        evidence[level] += weight;
      }
    }
  }

  /// Where a line that is placed meets a node.
  Levels levelsAt(std::size_t line, std::int64_t node) const {
    std::set<std::int64_t> levels;
    const std::vector<PlanVertex>& vertices = plan_.lines[line].vertices;
    for (const LineTrack& track : tracks_[line]) {
      for (std::size_t k = 0; k < track.size(); ++k) {
        if (vertices[k].node == node) levels.insert(track[k]);
      }
    }
    return {levels.begin(), levels.end()};
  }

  // One of two above each other tells nothing about the other where people can walk from one end
  // to the other in between, and escalators never turn round there. Flights that turn on a landing
  // begin where the one below ends.
  bool isStacked(const Climb& climb, const Climb& other, std::int64_t level) const {
    if (climb.comesBack() || !climb.sharesEndsWith(other)) return false;
    if (climb.line().oneway && other.line().oneway) return true;
    return isStandingFloorAt(climb.line().vertices.front(), level) &&
           isStandingFloorAt(climb.line().vertices.back(), level);
  }

  bool isStandingFloorAt(const PlanVertex& end, std::int64_t level) const {
    const auto lines = level_.find(end.node);
    return (lines != level_.end() && lines->second.contains(level)) ||
           around(end.coordinate).floor.contains(level);
  }

  const LevelsHere& around(Coordinate coordinate) const {
    const std::pair key(coordinate.latitude, coordinate.longitude);
    const auto known = around_cache_.find(key);
    if (known != around_cache_.end()) return known->second;
    return around_cache_.emplace(key, around_(coordinate)).first->second;
  }

  void place(std::size_t i, const Climb& climb, const Climb::Choice& choice) {
    if (choice.first == choice.last) {
      remarks_.push_back(climb.line().source + " is drawn on several levels and meets only " +
                         named(choice.first) + ": kept on it");
      return placeOn(i, choice.first);
    }
    for (LineTrack& track : flights(climb, choice)) {
      for (std::size_t k = 0; k < track.size(); ++k) meet(climb.line().vertices[k].node, track[k]);
      tracks_[i].push_back(std::move(track));
    }
  }

  // One that no line meets on its way, and that has floor at both ends on every level that it
  // passes, stands for flights one above the other.
  std::vector<LineTrack> flights(const Climb& climb, const Climb::Choice& choice) const {
    const LineTrack whole = levelsAlong(climb, choice);
    const Levels stops = stopsBetween(climb, choice);
    const bool stopsByItself = std::any_of(stops.begin(), stops.end(), [&](std::int64_t stop) {
      return std::find(whole.begin(), whole.end(), stop) != whole.end();
    });
    const bool stacked = !stops.empty() && !stopsByItself &&
                         std::all_of(stops.begin(), stops.end(), [&](std::int64_t stop) {
                           return isFloorAt(climb.line().vertices.front(), stop) &&
                                  isFloorAt(climb.line().vertices.back(), stop);
                         });
    if (!stacked) return {whole};
    std::vector<LineTrack> tracks;
    std::int64_t from = choice.first;
    for (const std::int64_t to : stops) {
      tracks.push_back(levelsAlong(climb, {from, to}));
      from = to;
    }
    tracks.push_back(levelsAlong(climb, {from, choice.last}));
    return tracks;
  }

  /// The levels that it passes, in its direction.
  static Levels stopsBetween(const Climb& climb, const Climb::Choice& choice) {
    Levels stops;
    for (const std::int64_t level : climb.levels()) {
      const auto [low, high] = std::minmax(choice.first, choice.last);
      if (level > low && level < high) stops.push_back(level);
    }
    if (choice.last < choice.first) std::reverse(stops.begin(), stops.end());
    return stops;
  }

  bool isFloorAt(const PlanVertex& end, std::int64_t level) const {
    const auto met = met_.find(end.node);
    const bool line = end.node != 0 && met != met_.end() && met->second.contains(level);
    return line || around(end.coordinate).floor.contains(level);
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

  /// The one of `levels` that lines tell of at an end or, where no line ends, that floor and doors
  /// do. A lift there leads to all of them.
  std::optional<std::int64_t> only(const Levels& levels, const PlanVertex& end) const {
    if (end.node != 0 && shafts_.contains(end.node)) return std::nullopt;
    const auto met = met_.find(end.node);
    const bool lines = end.node != 0 && met != met_.end();
    const std::set<std::int64_t>& told = lines ? met->second : around(end.coordinate).told;
    std::optional<std::int64_t> result;
    for (const std::int64_t level : told) {
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
  std::map<std::size_t, Levels> paths_;                     ///< on several levels
  std::map<std::size_t, std::int64_t> flatStairs_;          ///< on one level
  std::map<std::int64_t, std::set<std::int64_t>> met_;      ///< levels of lines at a node
  std::map<std::int64_t, std::set<std::int64_t>> level_;    ///< of those, of lines on one level
  std::map<std::int64_t, std::set<std::int64_t>> shafts_;   ///< where a lift at a node stops
  std::map<std::int64_t, std::set<std::size_t>> climbsAt_;  ///< by node
  mutable std::map<std::pair<double, double>, LevelsHere> around_cache_;
};

}  // namespace

std::vector<std::vector<LineTrack>> lineTracks(const FloorPlan& plan, const PlanLevels& levels,
                                               const LevelsAround& around,
                                               std::vector<std::string>& remarks) {
  return Resolver(plan, levels, around, remarks).tracks();
}

}  // namespace KorvaniTools
