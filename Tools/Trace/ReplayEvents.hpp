#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "Json/EngineJson.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Localisation/Intersection.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Platform/Location.hpp"
#include "Platform/NotificationCenter.hpp"

namespace KorvaniTools {

/// What the engine delivers, as lines of a replay's output. `line` is the number of the trace's
/// line that caused it.

/// An intersection task ended. Without an intersection, `kind` is null and nothing follows.
OrderedJson intersectionEvent(std::size_t line,
                              const std::shared_ptr<KorvaniNavigation::Intersection>& intersection);

/// A routing handler was called, with a route or without.
OrderedJson routeEvent(std::size_t line, const std::optional<KorvaniNavigation::Route>& route);

/// A routing handler was called for the last time. `destination` may be null.
OrderedJson arrivalEvent(std::size_t line,
                         const std::shared_ptr<KorvaniNavigation::KRVNavPoint>& destination);

OrderedJson notificationEvent(std::size_t line, const KorvaniPlatform::Notification& notification);

/// A handler was given a coordinate. `event` is "snapped" or "checked".
OrderedJson coordinateEvent(std::size_t line, const std::string& event,
                            KorvaniPlatform::CLLocationCoordinate2D coordinate);

/// The line could not be carried out.
OrderedJson errorEvent(std::size_t line, const std::string& message);

}  // namespace KorvaniTools
