#pragma once

#include <memory>
#include <string>

#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;

/// One straight walk of a route, from one graph point to the next.
///
/// A value; none of its fields changes after it was made (a whole step may be assigned). It
/// keeps both points alive, and copies share them. Whether the level changes and which way the
/// walk heads follow from the points:
///
///     const Step step(door, stairs, 12.0);
///     step.heading();      // bearing from the door to the stairs
///     step.levelChange();  // false while both are on one level
///
/// Thread safety: may be read from any thread.
class KORVANI_API Step {
 public:
  /// A walk of `distance` metres from `start` to `end`, neither of which may be null (fatal
  /// error). `timeMultiplicator` scales the walking time (1.0 is normal walking).
  /// `levelChange` and `heading` are taken from the two points as they are now.
  Step(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end, double distance,
       bool barrierFree = true, double timeMultiplicator = 1.0, std::string neighborType = "");

  /// The same with a heading that is known already, in degrees within [0, 360), instead of the
  /// bearing between the points. For steps whose points are too close to each other to give a
  /// direction, and for tests of exact angles.
  static Step withHeading(std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end,
                          double distance, double heading, bool barrierFree = true,
                          double timeMultiplicator = 1.0, std::string neighborType = "");

  /// Where the step begins; never null.
  const std::shared_ptr<KRVNavPoint>& start() const { return start_; }

  /// Where the step ends; never null.
  const std::shared_ptr<KRVNavPoint>& end() const { return end_; }

  /// Length in metres.
  double distance() const { return distance_; }

  /// Factor on the walking time, from the edge's `multiplicator`.
  double timeMultiplicator() const { return timeMultiplicator_; }

  /// Whether the step can be used without barriers, from the edge's `isBarrierFree`.
  bool barrierFree() const { return barrierFree_; }

  /// Whether the two points lie on different levels.
  bool levelChange() const { return levelChange_; }

  /// Bearing from start to end, degrees clockwise from north, in [0, 360); 0 when both points
  /// are at the same coordinate.
  double heading() const { return heading_; }

  /// The kind of connection ("stairs", "lift") as the graph names it; "" when it names none.
  const std::string& neighborType() const { return neighborType_; }

 private:
  struct Heading {
    double degrees;
  };

  Step(Heading heading, std::shared_ptr<KRVNavPoint> start, std::shared_ptr<KRVNavPoint> end,
       double distance, bool barrierFree, double timeMultiplicator, std::string neighborType);

  std::shared_ptr<KRVNavPoint> start_;
  std::shared_ptr<KRVNavPoint> end_;
  double distance_;
  double timeMultiplicator_;
  bool barrierFree_;
  bool levelChange_ = false;
  double heading_ = 0;
  std::string neighborType_;
};

}  // namespace KorvaniNavigation
