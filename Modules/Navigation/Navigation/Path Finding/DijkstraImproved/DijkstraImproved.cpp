#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Path Finding/Arrays/CompiledGraph.hpp"
#include "Navigation/Path Finding/DijkstraImproved/ArraySearch.hpp"
#include "Navigation/Path Finding/DijkstraImproved/PointSet.hpp"
#include "Navigation/Path Finding/DijkstraImproved/WaveLabels.hpp"
#include "Platform/FatalError.hpp"

namespace KorvaniNavigation {

namespace {

PointSet setOf(const DijkstraImproved::Points& points) {
  PointSet set;
  for (const auto& point : points) set.insert(*point);
  return set;
}

}  // namespace

DijkstraImproved::DijkstraImproved(std::weak_ptr<ConfigDependents> configDependents)
    : configDependents_(std::move(configDependents)), labels_(std::make_unique<WaveLabels>()) {}

DijkstraImproved::DijkstraImproved() { KORVANI_FATAL("Should not use"); }

DijkstraImproved::~DijkstraImproved() = default;

DijkstraImproved::Points DijkstraImproved::findPathInGraph(
    const std::shared_ptr<KRVNavGraph>& /*graph*/, const Points& fromIntersections,
    const std::vector<double>& withIntersectionDistances, const Points& toDestinationNodes,
    bool /*lookForBarrierFreeRoute*/) {
  benchmark_ = KorvaniCommon::Benchmark::start();
  if (fromIntersections.size() > withIntersectionDistances.size()) {
    KORVANI_FATAL("Start point without distance");
  }
  // What is gone on from belongs to the destinations that it was found for.
  if (inArrays_) labels();
  destinationNodes_ = toDestinationNodes;
  destination_ = nullptr;
  if (searchInArrays(fromIntersections, withIntersectionDistances)) {
    Points way = inArrays_->points();
    if (!way.empty()) destination_ = way.back();
    return way;
  }
  searchObjects(fromIntersections, withIntersectionDistances);
  auto path = labels_->bestPath();
  if (!path) return {};
  destination_ = path->nodes.back();
  return std::move(path->nodes);
}

bool DijkstraImproved::searchInArrays(const Points& starts, const std::vector<double>& distances) {
  if (!labels_->isEmpty() || interrupted()) return false;
  inArrays_ = ArraySearch::prepare(starts, distances, destinationNodes_, lookForBarrierFreeRoute_,
                                   interrupted_);
  if (!inArrays_) return false;
  inArrays_->run(interrupted_);
  return true;
}

void DijkstraImproved::searchObjects(const Points& starts, const std::vector<double>& distances) {
  for (std::size_t i = 0; i < starts.size(); ++i) labels_->addStart(starts[i], distances[i]);
  if (interrupted()) return;
  const PointSet destinations = setOf(destinationNodes_);
  labels_->run({destinations, lookForBarrierFreeRoute_, interrupted_});
}

/// The labels, those of the latest search included.
WaveLabels& DijkstraImproved::labels() const {
  if (inArrays_) {
    const std::atomic<bool> never{false};
    const PointSet destinations = setOf(destinationNodes_);
    for (std::size_t i = 0; i < inArrays_->starts.size(); ++i) {
      const StartNode& start = inArrays_->starts[i];
      labels_->addStart(inArrays_->compiled->structure().points()[start.node], start.distance);
    }
    if (inArrays_->wasInterrupted) {
      labels_->forgetWaiting();
    } else {
      const WaveLabels::CompiledEdges compiled(*inArrays_->compiled);
      labels_->run({destinations, inArrays_->barrierFree, never, &compiled});
    }
    inArrays_.reset();
  }
  return *labels_;
}

void DijkstraImproved::iteration(const std::shared_ptr<KRVNavGraph>& /*with*/) {
  const PointSet destinations = setOf(destinationNodes_);
  labels().wave({destinations, lookForBarrierFreeRoute_, interrupted_});
}

bool DijkstraImproved::isDestination(const KRVNavPoint& node) const {
  return std::any_of(destinationNodes_.begin(), destinationNodes_.end(),
                     [&](const auto& destination) { return node.isEqual(*destination); });
}

void DijkstraImproved::interrupt() { interrupted_.store(true); }

void DijkstraImproved::restart() {
  interrupted_.store(false);
  inArrays_.reset();
  labels_->clear();
}

void DijkstraImproved::setDestination(std::shared_ptr<KRVNavPoint> destination) {
  destination_ = std::move(destination);
}

std::optional<DijkstraImproved::Path> DijkstraImproved::bestPath() const {
  if (inArrays_) return inArrays_->bestPath();
  return labels_->bestPath();
}

std::optional<DijkstraImproved::Path> DijkstraImproved::pathTo(const KRVNavPoint& point) const {
  return labels().pathTo(point);
}

const DijkstraImproved::Points& DijkstraImproved::nodesToCheck() const {
  return labels_->nodesToCheck();
}

}  // namespace KorvaniNavigation
