#pragma once

// Internal. In which of several regions, or on which of several levels, a position is to be placed.

#include <cstdint>
#include <memory>

#include "Common/CountedArray.hpp"
#include "Navigation/Names.hpp"

namespace KorvaniNavigation {

class KRVNavRegion;

using Regions = KorvaniCommon::CountedArray<std::shared_ptr<KRVNavRegion>>;

/// Number of levels between two levels, which may lie at the ends of the integer range.
double levelGap(std::int64_t a, std::int64_t b);

/// The first region of the level whose rectangle, border included, contains the coordinate; null
/// when there is none.
std::shared_ptr<KRVNavRegion> regionContaining(const Regions& regions,
                                               CLLocationCoordinate2D coordinate,
                                               std::int64_t level);

/// The region of the level with the nearest south-west or north-east corner, in metres, else the
/// one of the nearest level; of equals the first. Null without regions.
std::shared_ptr<KRVNavRegion> regionCloseTo(const Regions& regions,
                                            CLLocationCoordinate2D coordinate, std::int64_t level);

/// The region that contains the coordinate, else the one close to it.
std::shared_ptr<KRVNavRegion> regionFor(const Regions& regions, CLLocationCoordinate2D coordinate,
                                        std::int64_t level);

}  // namespace KorvaniNavigation
