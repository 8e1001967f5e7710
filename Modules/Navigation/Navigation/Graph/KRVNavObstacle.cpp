#include "Navigation/Graph/KRVNavObstacle.hpp"

#include <utility>

#include "Navigation/Graph/GraphChanges.hpp"

namespace KorvaniNavigation {

KRVNavObstacle::KRVNavObstacle(std::vector<CLLocationCoordinate2D> coordinates)
    : KRVNavObstacle(std::move(coordinates), 0) {}

KRVNavObstacle::KRVNavObstacle(std::vector<CLLocationCoordinate2D> coordinates,
                               std::int64_t strength)
    : coordinates_(std::move(coordinates)), strength_(strength), hasStrength_(strength > 0) {}

KRVNavObstacle::~KRVNavObstacle() = default;

void KRVNavObstacle::setCoordinates(std::vector<CLLocationCoordinate2D> coordinates) {
  coordinates_ = std::move(coordinates);
  noteChange(isWatched_, &GraphChanges::obstacles);
}

CLLocationCoordinate2D KRVNavObstacle::coordinateAt(std::int64_t index) const {
  // A negative index becomes one beyond every array's end.
  return coordinates_.at(static_cast<std::size_t>(index));
}

std::size_t KRVNavObstacle::hash() const { return reinterpret_cast<std::uintptr_t>(this); }

bool KRVNavObstacle::isEqual(const KRVNavObstacle& other) const { return hash() == other.hash(); }

}  // namespace KorvaniNavigation
