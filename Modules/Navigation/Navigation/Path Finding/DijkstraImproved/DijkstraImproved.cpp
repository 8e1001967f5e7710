#include "Navigation/Path Finding/DijkstraImproved/DijkstraImproved.hpp"

#include <algorithm>
#include <cstddef>
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

/// The nodes that were the targets of a search, whatever identifiers they have by now.
PointSet targetsOf(const ArraySearch& search) {
  PointSet set(PointSet::Telling::objects);
  const auto& points = search.compiled->structure().points();
  for (const std::uint32_t target : search.targets) set.insert(*points[target]);
  return set;
}

/// The waves that a search in arrays was made without. False when they were interrupted.
bool runWaves(const ArraySearch& search, WaveLabels& labels, const std::atomic<bool>& interrupted) {
  Interruption interruption(interrupted);
  const WaveLabels::CompiledEdges edges(*search.compiled, interruption);
  if (interruption.seen()) return false;
  const PointSet targets = targetsOf(search);
  return labels.run({targets, search.barrierFree, interrupted, &edges});
}

void addSuccessors(const ArraySearch& search, WaveLabels& labels) {
  for (const auto& [starts, distances, hasBegun] : search.successors) {
    for (std::size_t i = 0; i < starts.size(); ++i) labels.addStart(starts[i], distances[i]);
    if (hasBegun) labels.giveUp();
  }
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
  destinationNodes_ = toDestinationNodes;
  destination_ = nullptr;
  const bool isInArrays = inArrays_
                              ? interruptedBefore(fromIntersections, withIntersectionDistances)
                              : searchInArrays(fromIntersections, withIntersectionDistances);
  if (!isInArrays) searchObjects(fromIntersections, withIntersectionDistances);
  auto path = bestPath();
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

/// Makes the labels that a search is to go on from. True when it was interrupted before it has
/// them: then they are left for later, and this search with them.
bool DijkstraImproved::interruptedBefore(const Points& starts,
                                         const std::vector<double>& distances) {
  const bool hasBegun = !interrupted();
  if (hasBegun && makeLabels(interrupted_)) return false;
  inArrays_->add({starts, distances, hasBegun});
  return true;
}

void DijkstraImproved::searchObjects(const Points& starts, const std::vector<double>& distances) {
  for (std::size_t i = 0; i < starts.size(); ++i) labels_->addStart(starts[i], distances[i]);
  if (interrupted()) return;
  const PointSet destinations = setOf(destinationNodes_);
  labels_->run({destinations, lookForBarrierFreeRoute_, interrupted_});
}

/// Makes the labels of a search in arrays. False when that was interrupted: then none are made.
bool DijkstraImproved::makeLabels(const std::atomic<bool>& interrupted) const {
  if (!inArrays_) return true;
  for (const StartNode& start : inArrays_->starts) {
    labels_->addStart(inArrays_->compiled->structure().points()[start.node], start.distance);
  }
  if (inArrays_->wasInterrupted) {
    labels_->giveUp();
  } else if (!runWaves(*inArrays_, *labels_, interrupted)) {
    labels_->clear();
    return false;
  }
  addSuccessors(*inArrays_, *labels_);
  inArrays_.reset();
  return true;
}

/// The labels, those of the latest search included.
WaveLabels& DijkstraImproved::labels() const {
  makeLabels(kNeverInterrupted);
  return *labels_;
}

void DijkstraImproved::iteration(const std::shared_ptr<KRVNavGraph>& /*with*/) {
  if (!makeLabels(interrupted_)) return inArrays_->add({{}, {}, true});
  const PointSet destinations = setOf(destinationNodes_);
  labels_->wave({destinations, lookForBarrierFreeRoute_, interrupted_});
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

// A search in arrays leaves none itself, so mostly its labels need not be made for this.
const DijkstraImproved::Points& DijkstraImproved::nodesToCheck() const {
  if (inArrays_ && !inArrays_->successors.empty()) return labels().nodesToCheck();
  return labels_->nodesToCheck();
}

}  // namespace KorvaniNavigation
