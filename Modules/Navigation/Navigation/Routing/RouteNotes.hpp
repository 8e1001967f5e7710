#pragma once

// Internal. What is noted of the points of a route.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "Common/Derived.hpp"
#include "Common/Revision.hpp"
#include "Navigation/Names.hpp"
#include "Navigation/Routing/Step.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;
struct ComputedSteps;

/// What a route's own graph takes over of a point.
struct NotedPoint {
  explicit NotedPoint(const KRVNavPoint& point);

  bool hasIdentifier() const { return identifier >= 0; }

  const KRVNavPoint* object;  ///< tells points apart; kept alive by the route
  CLLocationCoordinate2D coordinate;
  std::int64_t level;
  std::int64_t identifier;
};

/// The points of the steps of a route, as they were when they were noted.
///
/// The places of a route are the starts of its steps and the end of the last one, numbered from 0
/// in walking order; without steps there is none. Made once for all positions on a route, and anew
/// when a point has changed.
///
/// Points of the building are watched, so that their changes are counted. The others (feet on
/// edges, and on a direct line the host's own position and destination) are compared with what was
/// noted: they are few, and a host may move its position object many times a second, which must
/// not have the forms of the building made anew.
///
/// Constant; any number of threads may read it.
class RouteNotes {
 public:
  /// The places from `first` on and before `end`, all of one level.
  struct Flight {
    std::int64_t level;
    std::size_t first;
    std::size_t end;  ///< the first place after it
  };

  /// The notes of those steps as their points are now.
  static std::shared_ptr<const RouteNotes> of(ComputedSteps& steps);

  explicit RouteNotes(const std::vector<Step>& steps);

  /// What is made of the points as they were noted.
  const KorvaniCommon::Derived& derived() const { return derived_; }

  std::size_t placeCount() const { return coordinates_.size(); }

  /// The point at a place.
  const NotedPoint& at(std::size_t place) const;

  /// The end of the step that starts at `place`, which is not the last place.
  const NotedPoint& endOfStep(std::size_t place) const { return ends_[2 * place + 1]; }

  /// The coordinates of all places.
  const std::vector<CLLocationCoordinate2D>& coordinates() const { return coordinates_; }

  /// The stretches on one level, in walking order.
  const std::vector<Flight>& flights() const { return flights_; }

  /// Whether each step starts where the one before ends, no point is met twice, and all coordinates
  /// are on Earth: then the route's graph is a chain, and what lies near a position can be told
  /// without it.
  bool isChain() const;

 private:
  /// A point that nobody watches, with all that is asked of it.
  struct LoosePoint {
    explicit LoosePoint(const KRVNavPoint& point);

    bool isAsNoted() const;

    NotedPoint noted;
    CLLocation location;
  };

  bool isCurrent() const;
  void watch(const KRVNavPoint& point);
  bool isLinked() const;
  bool isWithoutTwins() const;

  const KorvaniCommon::RevisionStamp stamp_;
  std::vector<NotedPoint> ends_;  ///< start and end of each step
  std::vector<CLLocationCoordinate2D> coordinates_;
  std::vector<Flight> flights_;
  std::vector<LoosePoint> loose_;
  KorvaniCommon::Derived derived_;
  mutable std::once_flag looking_;
  mutable bool isChain_ = false;
};

}  // namespace KorvaniNavigation
