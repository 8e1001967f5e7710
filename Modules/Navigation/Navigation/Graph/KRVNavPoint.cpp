#include "Navigation/Graph/KRVNavPoint.hpp"

#include <cmath>
#include <utility>

#include "Navigation/Graph/GraphChanges.hpp"
#include "Navigation/Graph/GraphSettings.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Graph/StripedMutexes.hpp"

namespace KorvaniNavigation {

namespace {

constexpr std::int64_t kNoIdentifier = -1;

// Absent when any link of the chain is.
std::shared_ptr<KRVNavGraph> graphOf(const KRVNavPoint& point) {
  const std::shared_ptr<KRVNavRegion> region = point.region();
  return region ? region->graph() : nullptr;
}

CLLocation locationAt(CLLocationCoordinate2D coordinate, std::int64_t level) {
  const Date now = KorvaniPlatform::clock()->date();
  return CLLocation(coordinate, static_cast<double>(level), 0, 0, now);
}

}  // namespace

KRVNavPoint::KRVNavPoint(CLLocationCoordinate2D coordinate, std::int64_t level)
    : KRVNavPoint(coordinate, level, kNoIdentifier) {}

KRVNavPoint::KRVNavPoint(CLLocationCoordinate2D coordinate, std::int64_t level,
                         std::int64_t identifier)
    : identifier_(identifier),
      identifierNumber_(identifier),
      coordinate_(coordinate),
      level_(level),
      location_(locationAt(coordinate, level)) {}

KRVNavPoint::~KRVNavPoint() = default;

void KRVNavPoint::setIdentifier(std::int64_t identifier) {
  identifier_ = identifier;
  noteChange(isWatched_, &GraphChanges::points);
}

void KRVNavPoint::setIdentifierNumber(std::int64_t number) {
  identifierNumber_.store(number);
  noteChange(isWatched_, &GraphChanges::points);
}

void KRVNavPoint::setCoordinate(CLLocationCoordinate2D coordinate) {
  coordinate_ = coordinate;
  noteChange(isWatched_, &GraphChanges::points);
}

void KRVNavPoint::setLevel(std::int64_t level) {
  level_ = level;
  noteChange(isWatched_, &GraphChanges::points);
}

CLLocation KRVNavPoint::location() const { return location_.load(); }

void KRVNavPoint::setLocation(CLLocation location) {
  location_.store(location);
  noteChange(isWatched_, &GraphChanges::points);
}

std::shared_ptr<KRVNavRegion> KRVNavPoint::region() const {
  return readGuarded(this, region_).lock();
}

void KRVNavPoint::setRegion(const std::shared_ptr<KRVNavRegion>& region) {
  writeGuarded(this, region_, std::weak_ptr<KRVNavRegion>(region));
  noteChange(isWatched_, &GraphChanges::points);
}

std::vector<std::shared_ptr<KRVNavEdge>> KRVNavPoint::neighbourEdges() const {
  std::vector<std::shared_ptr<KRVNavEdge>> result;
  const std::shared_ptr<KRVNavGraph> graph = graphOf(*this);
  if (!graph) return result;
  const auto neighbours = graph->neighbourIdentifiersOfNodeWithIdentifier(identifierNumber());
  if (!neighbours) return result;
  result.reserve(neighbours->size());
  for (const std::int64_t neighbour : *neighbours) {
    // Asked for afresh each time: the point may change hands while the list is made.
    const std::shared_ptr<KRVNavGraph> current = graphOf(*this);
    if (!current) continue;
    auto edge = current->edgeFromNodeWithIdentifier(identifierNumber(), neighbour);
    if (edge) result.push_back(std::move(edge));
  }
  return result;
}

double KRVNavPoint::distanceFrom(const KRVNavPoint& other) const {
  const double d = location().distanceFromLocation(other.location());
  const double h = graphSettings().levelHeight();
  return std::sqrt(d * d + h * h);
}

bool KRVNavPoint::locatedNearPoint(const KRVNavPoint& other) const {
  if (level_ != other.level_) return false;
  return distanceFrom(other) < graphSettings().targetProximityDistance();
}

std::shared_ptr<KRVNavPoint> KRVNavPoint::locatedNearPoints(
    const std::vector<std::shared_ptr<KRVNavPoint>>& points) const {
  for (const auto& point : points) {
    if (locatedNearPoint(*point)) return point;
  }
  return nullptr;
}

bool KRVNavPoint::isEqual(const KRVNavPoint& other) const {
  if (identifier_ < 0 || other.identifier_ < 0) return hash() == other.hash();
  return identifier_ == other.identifier_;
}

bool KRVNavPoint::isEqual(const KRVNavPoint* other) const { return other && isEqual(*other); }

std::size_t KRVNavPoint::hash() const { return reinterpret_cast<std::uintptr_t>(this); }

}  // namespace KorvaniNavigation
