#include "Navigation/Routing/RouteNotes.hpp"

#include <algorithm>

#include "Navigation/Graph/GraphAccess.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/NodeTree.hpp"
#include "Navigation/Routing/RemainingSteps.hpp"

namespace KorvaniNavigation {

NotedPoint::NotedPoint(const KRVNavPoint& point)
    : object(&point),
      coordinate(point.coordinate()),
      level(point.level()),
      identifier(point.identifier()) {}

std::shared_ptr<const RouteNotes> RouteNotes::of(ComputedSteps& steps) {
  auto notes = steps.notes.load();
  if (notes && notes->isCurrent()) return notes;
  notes = std::make_shared<const RouteNotes>(steps.steps);
  steps.notes.store(notes);
  return notes;
}

RouteNotes::LoosePoint::LoosePoint(const KRVNavPoint& point)
    : noted(point), location(point.location()) {}

bool RouteNotes::LoosePoint::isAsNoted() const {
  const NotedPoint now(*noted.object);
  const CLLocation nowAt = noted.object->location();
  return now.coordinate == noted.coordinate && now.level == noted.level &&
         now.identifier == noted.identifier && nowAt.coordinate() == location.coordinate() &&
         nowAt.altitude() == location.altitude();
}

bool RouteNotes::isCurrent() const {
  return stamp_ == GraphAccess::pointsStamp() &&
         std::all_of(loose_.begin(), loose_.end(),
                     [](const LoosePoint& point) { return point.isAsNoted(); });
}

/// Before anything is asked of the point.
void RouteNotes::watch(const KRVNavPoint& point) {
  if (GraphAccess::hasRegion(point)) {
    GraphAccess::watch(point);
  } else {
    loose_.emplace_back(point);
  }
}

// The stamp comes first, so that no change is missed.
RouteNotes::RouteNotes(const std::vector<Step>& steps) : stamp_(GraphAccess::pointsStamp()) {
  if (steps.empty()) return;
  ends_.reserve(2 * steps.size());
  coordinates_.reserve(steps.size() + 1);
  const auto note = [this](const NotedPoint& point) {
    if (flights_.empty() || flights_.back().level != point.level) {
      flights_.push_back({point.level, coordinates_.size(), 0});
    }
    coordinates_.push_back(point.coordinate);
    flights_.back().end = coordinates_.size();
  };
  const KRVNavPoint* lastEnd = nullptr;
  for (const Step& step : steps) {
    if (step.start().get() != lastEnd) watch(*step.start());
    watch(*step.end());
    lastEnd = step.end().get();
    ends_.emplace_back(*step.start());
    note(ends_.back());
    ends_.emplace_back(*step.end());
  }
  note(ends_.back());
}

const NotedPoint& RouteNotes::at(std::size_t place) const {
  return place + 1 < placeCount() ? ends_[2 * place] : ends_.back();
}

bool RouteNotes::isChain() const {
  std::call_once(looking_, [this] {
    isChain_ = isLinked() && isWithoutTwins() &&
               std::all_of(coordinates_.begin(), coordinates_.end(), NodeTree::isOrdinary);
  });
  return isChain_;
}

bool RouteNotes::isLinked() const {
  for (std::size_t end = 1; end + 1 < ends_.size(); end += 2) {
    if (ends_[end].object != ends_[end + 1].object) return false;
  }
  return true;
}

/// Points without an identifier are told apart as objects, those with one by the identifier.
bool RouteNotes::isWithoutTwins() const {
  std::vector<std::int64_t> identifiers;
  std::vector<const KRVNavPoint*> others;
  identifiers.reserve(placeCount());
  for (std::size_t place = 0; place < placeCount(); ++place) {
    const NotedPoint& point = at(place);
    if (point.hasIdentifier()) {
      identifiers.push_back(point.identifier);
    } else {
      others.push_back(point.object);
    }
  }
  std::sort(identifiers.begin(), identifiers.end());
  std::sort(others.begin(), others.end(), std::less<>());
  return std::adjacent_find(identifiers.begin(), identifiers.end()) == identifiers.end() &&
         std::adjacent_find(others.begin(), others.end()) == others.end();
}

}  // namespace KorvaniNavigation
