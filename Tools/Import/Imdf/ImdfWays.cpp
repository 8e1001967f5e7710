#include "Import/Imdf/ImdfWays.hpp"

#include <algorithm>
#include <set>
#include <utility>

namespace KorvaniTools {
namespace {

constexpr std::int64_t kOutdoors = 0;

struct WayPoint {
  Coordinate coordinate;
  std::optional<std::size_t> level;  ///< index into `ImdfModel::levels`; absent outdoors
  std::string id;
  std::vector<std::string> neighbours;
};

class WayReader {
 public:
  explicit WayReader(ImdfModel& model) : model_(model) {}

  void read() {
    forEachFeature(model_.archive, "navPath", Broken::someLeftOut, model_.remarks,
                   [this](const ImdfFeature& feature) { addPoint(feature); });
    for (std::size_t point = 0; point < points_.size(); ++point) link(point);
    for (const auto& [from, to] : links_) {
      if (!points_[from].level) besideOutdoors_.insert(to);
      if (!points_[to].level) besideOutdoors_.insert(from);
    }
    for (const auto& [from, to] : links_) addLine(from, to);
  }

 private:
  void addPoint(const ImdfFeature& feature) {
    WayPoint point;
    point.id = feature.id();
    point.coordinate = feature.point();
    if (feature.find("level_id") != nullptr) {
      point.level = model_.levelOf(feature);
      if (!point.level) return;
    }
    point.neighbours = feature.texts("neighbours");
    if (enroll(ids_, feature, points_.size())) points_.push_back(std::move(point));
  }

  void link(std::size_t from) {
    for (const std::string& id : points_[from].neighbours) {
      const auto found = ids_.find(id);
      if (found == ids_.end()) {
        model_.remarks.note("navPath.geojson: neighbours that do not exist, ignored", inQuotes(id));
      } else if (found->second != from) {
        links_.emplace(from, found->second);
      }
    }
  }

  void addLine(std::size_t from, std::size_t to) {
    // The first step indoors belongs to the way in: the point before it is drawn in the wall.
    if (!besideOutdoors_.contains(from) && !besideOutdoors_.contains(to)) return;
    const bool twoWay = links_.contains({to, from});
    if (twoWay && from > to) return;  // the earlier point makes the line
    const auto levels = std::minmax({ordinalOf(from), ordinalOf(to)});
    PlanLine line;
    line.source = "navPath/" + points_[from].id;
    line.levels = {static_cast<double>(levels.first)};
    if (levels.second != levels.first) {
      // A building on a slope, which counts its floors from another ground.
      line.levels.push_back(static_cast<double>(levels.second));
      line.kind = ConnectionKind::door;
      line.incline = ordinalOf(from) < ordinalOf(to) ? 1 : -1;
    }
    line.oneway = !twoWay;
    line.vertices = {vertexOf(from), vertexOf(to)};
    model_.plan.lines.push_back(std::move(line));
  }

  std::int64_t ordinalOf(std::size_t point) const {
    const auto level = points_[point].level;
    return level ? model_.levels[*level].ordinal : kOutdoors;
  }

  PlanVertex vertexOf(std::size_t point) const {
    // Node 0 is nobody's.
    return {static_cast<std::int64_t>(point) + 1, points_[point].coordinate};
  }

  ImdfModel& model_;
  std::vector<WayPoint> points_;
  ImdfIds ids_;
  std::set<std::pair<std::size_t, std::size_t>> links_;  ///< from, to
  std::set<std::size_t> besideOutdoors_;                 ///< points linked with one outdoors
};

}  // namespace

void readImdfWays(ImdfModel& model) { WayReader(model).read(); }

}  // namespace KorvaniTools
