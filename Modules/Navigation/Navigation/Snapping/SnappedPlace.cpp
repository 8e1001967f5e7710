#include "Navigation/Snapping/SnappedPlace.hpp"

#include <utility>

#include "Navigation/Graph/KRVNavPoint.hpp"

namespace KorvaniNavigation {

SnappedPlace::SnappedPlace(std::shared_ptr<Intersection> intersection)
    : intersection_(std::move(intersection)) {}

SnappedPlace::SnappedPlace(TrackPlace place, std::shared_ptr<const RouteTrack> track)
    : place_(std::move(place)), track_(std::move(track)) {}

CLLocationCoordinate2D SnappedPlace::coordinate() const {
  return (place_ ? place_->node : intersection_->node())->coordinate();
}

std::shared_ptr<Intersection> SnappedPlace::intersection() const {
  const std::lock_guard lock(making_);
  if (!intersection_) intersection_ = track_->intersectionAt(*place_);
  return intersection_;
}

}  // namespace KorvaniNavigation
