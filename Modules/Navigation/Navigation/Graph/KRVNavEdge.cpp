#include "Navigation/Graph/KRVNavEdge.hpp"

#include <utility>

#include "Navigation/Graph/GraphChanges.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/StripedMutexes.hpp"

namespace KorvaniNavigation {

KRVNavEdge::KRVNavEdge(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end)
    : KRVNavEdge(start, end, start->distanceFrom(*end), 1.0, true) {}

KRVNavEdge::KRVNavEdge(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end,
                       double distance, double multiplicator, bool isBarrierFree)
    : KRVNavEdge(std::move(start), std::move(end), distance, multiplicator, isBarrierFree,
                 std::nullopt) {}

KRVNavEdge::KRVNavEdge(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end,
                       double distance, double multiplicator, bool isBarrierFree,
                       std::optional<std::string> type)
    : start_(std::move(start)),
      end_(std::move(end)),
      distance_(distance),
      multiplicator_(multiplicator),
      isBarrierFree_(isBarrierFree),
      type_(std::move(type)) {}

KRVNavEdge::~KRVNavEdge() = default;

std::shared_ptr<KRVNavPoint> KRVNavEdge::start() const { return readGuarded(this, start_); }

void KRVNavEdge::setStart(std::shared_ptr<KRVNavPoint> start) {
  writeGuarded(this, start_, std::move(start));
  noteChange(isWatched_, &GraphChanges::edgeEnds);
}

std::shared_ptr<KRVNavPoint> KRVNavEdge::end() const { return readGuarded(this, end_); }

void KRVNavEdge::setEnd(std::shared_ptr<KRVNavPoint> end) {
  writeGuarded(this, end_, std::move(end));
  noteChange(isWatched_, &GraphChanges::edgeEnds);
}

void KRVNavEdge::setDistance(double distance) {
  distance_ = distance;
  noteChange(isWatched_, &GraphChanges::edgeCosts);
}

void KRVNavEdge::setMultiplicator(double multiplicator) {
  multiplicator_ = multiplicator;
  noteChange(isWatched_, &GraphChanges::edgeCosts);
}

void KRVNavEdge::setIsBarrierFree(bool isBarrierFree) {
  isBarrierFree_ = isBarrierFree;
  noteChange(isWatched_, &GraphChanges::edgeCosts);
}

std::optional<std::string> KRVNavEdge::type() const { return readGuarded(this, type_); }

void KRVNavEdge::setType(std::optional<std::string> type) {
  writeGuarded(this, type_, std::move(type));
}

}  // namespace KorvaniNavigation
