#include "Drawing/Viewer/DrawnWalk.hpp"

#include <algorithm>
#include <map>
#include <utility>

namespace KorvaniTools {
namespace {

bool isSnapped(const Moment& moment) { return moment.operation == "snap" && moment.snapped; }

class TrackMaker {
 public:
  TrackMaker(const Timeline& timeline, const SceneFrame& frame)
      : frame_(frame),
        snaps_(std::any_of(timeline.moments.begin(), timeline.moments.end(), isSnapped)) {}

  void add(const Moment& moment) {
    if (moment.raw && moment.raw != lastMeasured_) {
      tracks_[moment.raw->level].measured.push_back(at(*moment.raw));
      lastMeasured_ = moment.raw;
    }
    if (moment.denied && moment.raw) addJump(moment);
    const auto shown = shownAt(moment);
    if (shown && shown != lastShown_) {
      tracks_[shown->level].snapped.push_back(at(*shown));
      lastShown_ = shown;
    }
  }

  std::vector<SceneTrack> take() {
    std::vector<SceneTrack> result;
    for (auto& [level, track] : tracks_) {
      track.level = level;
      result.push_back(std::move(track));
    }
    return result;
  }

 private:
  ScenePoint at(const TimelinePoint& point) const { return frame_.at(point.coordinate); }

  void addJump(const Moment& moment) {
    SceneJump jump{at(*moment.raw), {}};
    if (moment.checked && moment.checked->level == moment.raw->level) {
      jump.held = at(*moment.checked);
    }
    tracks_[moment.raw->level].denied.push_back(jump);
  }

  /// What the person was shown by this line of the trace.
  std::optional<TimelinePoint> shownAt(const Moment& moment) const {
    if (isSnapped(moment)) return moment.snapped;
    if (snaps_) return {};
    if (moment.operation == "position" && !moment.ahead.empty()) return moment.ahead.front();
    if (moment.operation == "check") return moment.checked;
    return {};
  }

  const SceneFrame& frame_;
  const bool snaps_;
  std::map<std::int64_t, SceneTrack> tracks_;
  std::optional<TimelinePoint> lastMeasured_;
  std::optional<TimelinePoint> lastShown_;
};

}  // namespace

DrawnRoute drawnRoute(const TimelineRoute& route, const LevelNames& levels,
                      const SceneFrame& frame) {
  DrawnRoute drawn = drawnRoute(route.found, route.start, route.end, levels, frame);
  drawn.direct = route.direct;
  return drawn;
}

std::optional<DrawnRoute> firstRoute(const Timeline& timeline, const SceneFrame& frame) {
  if (timeline.routes.empty()) return {};
  return drawnRoute(timeline.routes.front(), timeline.levels, frame);
}

std::vector<SceneTrack> tracksOf(const Timeline& timeline, const SceneFrame& frame) {
  TrackMaker maker(timeline, frame);
  for (const Moment& moment : timeline.moments) maker.add(moment);
  return maker.take();
}

}  // namespace KorvaniTools
