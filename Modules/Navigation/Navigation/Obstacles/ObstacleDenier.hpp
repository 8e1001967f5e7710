#pragma once

#include "Navigation/Names.hpp"
#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KRVNavPoint;

/// Decides for each new indoor position whether the person can really have moved there from the
/// last accepted one, or whether the jump leads through a wall and must be held back.
///
/// Positioning inside buildings jumps: a reading in the next room is more often an error than a
/// step through the wall. A denier remembers what it has accepted, so one denier sees all
/// positions of a person, in their order:
///
///     const CLLocationCoordinate2D shown = denier.check(position);
///
/// `StrengthBasedObstacleDenier` is what the facade gives to the obstacle checks it makes;
/// `DefaultObstacleDenier` is the alternative, for hosts that make their own.
///
/// Thread safety: checks of one denier come one at a time. The deniers here see to it
/// themselves, but in which order positions of several threads come is up to the caller.
class KORVANI_API ObstacleDenier {
 public:
  virtual ~ObstacleDenier();

  /// The coordinate to use: the point's own when the move is accepted, the last accepted one
  /// when it is blocked. A position that belongs to no region of the graph (there is no graph,
  /// or it has no regions) comes back as it is and is not remembered.
  virtual CLLocationCoordinate2D check(const KRVNavPoint& point) = 0;
};

}  // namespace KorvaniNavigation
