#include "FloorPlan/LineNetwork.hpp"

#include <map>
#include <utility>

namespace KorvaniTools {
namespace {

constexpr double kSameVertex = 0.01;  // metres

using Key = std::pair<std::int64_t, std::int64_t>;  // source node, level

class Network {
 public:
  Network(const FloorPlan& plan, const std::vector<std::vector<LineTrack>>& tracks,
          const LocalFrame& frame, PlanGraph& graph, std::vector<std::string>& sources)
      : plan_(plan), tracks_(tracks), frame_(frame), graph_(graph), sources_(sources) {}

  void add() {
    for (std::size_t i = 0; i < plan_.lines.size(); ++i) {
      for (const LineTrack& track : tracks_[i]) joinSameSpots(plan_.lines[i], track);
    }
    for (std::size_t i = 0; i < plan_.lines.size(); ++i) {
      for (const LineTrack& track : tracks_[i]) addLine(plan_.lines[i], track);
    }
  }

 private:
  void joinSameSpots(const PlanLine& line, const LineTrack& track) {
    for (std::size_t k = 0; k + 1 < line.vertices.size(); ++k) {
      const PlanVertex& a = line.vertices[k];
      const PlanVertex& b = line.vertices[k + 1];
      if (a.node == 0 || b.node == 0 || track[k] != track[k + 1]) continue;
      if (groundDistance(frame_.metres(a.coordinate), frame_.metres(b.coordinate)) > kSameVertex) {
        continue;
      }
      const Key first = representative({a.node, track[k]});
      const Key second = representative({b.node, track[k]});
      if (first != second) same_.emplace(second, first);
    }
  }

  Key representative(Key key) const {
    for (auto found = same_.find(key); found != same_.end(); found = same_.find(key)) {
      key = found->second;
    }
    return key;
  }

  std::size_t nodeOf(const PlanVertex& vertex, std::int64_t level) {
    const GroundPoint at = frame_.metres(vertex.coordinate);
    if (vertex.node == 0) return graph_.addNode(level, at);
    const std::size_t node = graph_.nodeAt(representative({vertex.node, level}).first, level, at);
    graph_.name(vertex.node, level, node);
    return node;
  }

  void addLine(const PlanLine& line, const LineTrack& track) {
    const bool slope = line.kind == ConnectionKind::path && track.front() != track.back();
    const ConnectionKind kind = slope ? ConnectionKind::ramp : line.kind;
    std::size_t last = nodeOf(line.vertices[0], track[0]);
    graph_.endLineAt(last);
    for (std::size_t k = 1; k < line.vertices.size(); ++k) {
      const bool same = line.vertices[k].node == 0 && track[k] == graph_.nodes()[last].level &&
                        groundDistance(frame_.metres(line.vertices[k].coordinate),
                                       graph_.nodes()[last].at) <= kSameVertex;
      const std::size_t next = same ? last : nodeOf(line.vertices[k], track[k]);
      if (next == last) continue;
      const bool turned = line.oneway && line.backward;
      const PlanGraph::Edge piece{turned ? next : last, turned ? last : next, kind, line.stepFree,
                                  line.oneway};
      if (graph_.addDrawn(piece)) sources_.push_back(line.source);
      last = next;
    }
    graph_.endLineAt(last);
  }

  const FloorPlan& plan_;
  const std::vector<std::vector<LineTrack>>& tracks_;
  const LocalFrame& frame_;
  PlanGraph& graph_;
  std::vector<std::string>& sources_;
  std::map<Key, Key> same_;
};

}  // namespace

void addLineNetwork(const FloorPlan& plan, const std::vector<std::vector<LineTrack>>& tracks,
                    const LocalFrame& frame, PlanGraph& graph,
                    std::vector<std::string>& drawnSources) {
  Network(plan, tracks, frame, graph, drawnSources).add();
}

}  // namespace KorvaniTools
