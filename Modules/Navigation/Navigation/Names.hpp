#pragma once

/// The names that the navigation module shares with the layers below it.
///
/// On a phone, coordinates, locations and map points are global names of the system. Here they
/// live in KorvaniPlatform, so that the engine can stand beside the real ones in one program.
/// Including this header lets code in KorvaniNavigation, and its users, spell them without the
/// prefix:
///
///   KorvaniNavigation::CLLocationCoordinate2D entrance{48.1372, 11.5756};
///
/// Nothing is defined here: every name is an alias of the entity it stands for.

#include "Common/OrderedDictionary.hpp"
#include "Platform/Clock.hpp"
#include "Platform/Location.hpp"
#include "Platform/MapPoint.hpp"
#include "Platform/Value.hpp"

namespace KorvaniNavigation {

using KorvaniCommon::OrderedDictionary;

using KorvaniPlatform::CLLocation;
using KorvaniPlatform::CLLocationCoordinate2D;
using KorvaniPlatform::Date;
using KorvaniPlatform::MKCoordinateForMapPoint;
using KorvaniPlatform::MKMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;
using KorvaniPlatform::MKMetersBetweenMapPoints;

using KorvaniPlatform::Dictionary;
using KorvaniPlatform::Number;
using KorvaniPlatform::Value;

}  // namespace KorvaniNavigation
