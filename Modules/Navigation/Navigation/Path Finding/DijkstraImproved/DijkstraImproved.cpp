#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"

#include <algorithm>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

// The points that a wave improves, each once however many edges improve it.
struct DijkstraImproved::Wave {
  Points points;
  PointSet members;

  void add(const std::shared_ptr<KRVNavPoint>& point) {
    if (members.insert(*point)) points.push_back(point);
  }
};

DijkstraImproved::DijkstraImproved(std::weak_ptr<ConfigDependents> configDependents)
    : configDependents_(std::move(configDependents)) {}

DijkstraImproved::DijkstraImproved() { KORVANI_FATAL("Should not use"); }

DijkstraImproved::~DijkstraImproved() = default;

DijkstraImproved::Points DijkstraImproved::findPathInGraph(
    const std::shared_ptr<KRVNavGraph>& graph, const Points& fromIntersections,
    const std::vector<double>& withIntersectionDistances, const Points& toDestinationNodes,
    bool /*lookForBarrierFreeRoute*/) {
  benchmark_ = KorvaniCommon::Benchmark::start();
  setTargets(toDestinationNodes);
  destination_ = nullptr;
  for (std::size_t i = 0; i < fromIntersections.size(); ++i) {
    if (i >= withIntersectionDistances.size()) KORVANI_FATAL("Start point without distance");
    addStart(fromIntersections[i], withIntersectionDistances[i]);
  }
  if (!interrupted()) runWaves(graph);
  if (!bestPath_) return {};
  Points way = spelledOut(*bestPath_).nodes;
  if (!way.empty()) destination_ = way.back();
  return way;
}

// An interruption between two waves is for the next one to see: it gives up. Stopping here instead
// would hand out a best path that need not be the cheapest.
void DijkstraImproved::runWaves(const std::shared_ptr<KRVNavGraph>& graph) {
  while (!nodesToCheck_.empty()) iteration(graph);
}

void DijkstraImproved::iteration(const std::shared_ptr<KRVNavGraph>& /*with*/) {
  Wave next;
  for (const auto& point : nodesToCheck_) {
    if (interrupted()) break;
    if (!isDestination(*point)) expand(*point, next);
  }
  if (interrupted()) {
    giveUp();
  } else {
    nodesToCheck_ = std::move(next.points);
  }
}

void DijkstraImproved::giveUp() {
  bestPath_.reset();
  nodesToCheck_.clear();
}

void DijkstraImproved::expand(const KRVNavPoint& point, Wave& next) {
  for (const auto& edge : point.neighbourEdges()) {
    if (interrupted()) return;
    relax(point, *edge, next);
  }
}

void DijkstraImproved::relax(const KRVNavPoint& point, const KRVNavEdge& edge, Wave& next) {
  if (lookForBarrierFreeRoute_ && !edge.isBarrierFree()) return;
  const std::shared_ptr<KRVNavPoint> end = edge.end();
  if (!end) KORVANI_FATAL("an edge of the graph has no end node");
  const std::optional<PathIndex> old = find(*end);
  const std::optional<PathIndex> current = find(point);
  if (!current) KORVANI_FATAL("Point to check without label");
  const double distance = edge.multiplicator() * edge.distance() + paths_[*current].distance;
  if (old && !(distance < paths_[*old].distance)) return;  // written so that NaN never improves
  next.add(end);
  const PathIndex candidate = appendPath({end, current, distance});
  if (!isDestination(*end)) return;
  if (!bestPath_ || distance < paths_[*bestPath_].distance) bestPath_ = candidate;
}

bool DijkstraImproved::isDestination(const KRVNavPoint& node) const {
  return destinationSet_.contains(node);
}

void DijkstraImproved::interrupt() { interrupted_.store(true); }

void DijkstraImproved::restart() {
  interrupted_.store(false);
  pathStore_.clear();
  nodesToCheck_.clear();
  bestPath_.reset();
  paths_.clear();  // last: keys of the store are addresses of points that these entries hold
}

void DijkstraImproved::setDestination(std::shared_ptr<KRVNavPoint> destination) {
  destination_ = std::move(destination);
}

std::optional<DijkstraImproved::Path> DijkstraImproved::bestPath() const {
  if (!bestPath_) return std::nullopt;
  return spelledOut(*bestPath_);
}

std::optional<DijkstraImproved::Path> DijkstraImproved::pathTo(const KRVNavPoint& point) const {
  const std::optional<PathIndex> index = find(point);
  if (!index) return std::nullopt;
  return spelledOut(*index);
}

void DijkstraImproved::setTargets(const Points& destinationNodes) {
  destinationNodes_ = destinationNodes;
  destinationSet_ = PointSet();
  for (const auto& destination : destinationNodes_) destinationSet_.insert(*destination);
}

void DijkstraImproved::addStart(const std::shared_ptr<KRVNavPoint>& point, double distance) {
  appendPath({point, std::nullopt, distance});
  nodesToCheck_.push_back(point);
}

DijkstraImproved::PathIndex DijkstraImproved::appendPath(PathEnd path) {
  const PathIndex index = paths_.size();
  pathStore_[path.node.get()] = index;
  paths_.push_back(std::move(path));
  return index;
}

std::optional<DijkstraImproved::PathIndex> DijkstraImproved::find(const KRVNavPoint& point) const {
  const auto found = pathStore_.find(&point);
  if (found == pathStore_.end()) return std::nullopt;
  return found->second;
}

DijkstraImproved::Path DijkstraImproved::spelledOut(PathIndex index) const {
  Path path;
  path.distance = paths_[index].distance;
  for (std::optional<PathIndex> at = index; at; at = paths_[*at].before) {
    path.nodes.push_back(paths_[*at].node);
  }
  std::reverse(path.nodes.begin(), path.nodes.end());
  return path;
}

}  // namespace KorvaniNavigation
