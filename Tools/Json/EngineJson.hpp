#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Routing/Route.hpp"
#include "Navigation/Routing/Step.hpp"
#include "Platform/Value.hpp"

namespace KorvaniTools {

/// The engine's values as JSON, members in the order of the output format.
///
///     std::cout << jsonText(routeJson(route)) << '\n';
///
/// Numbers are written so that they read back to the same double; one that is not finite is
/// null. Booleans are true and false, integers have no fraction.
using OrderedJson = nlohmann::ordered_json;

/// `number`, or null when it is not finite.
OrderedJson numberJson(double number);

/// A boolean, an integer or a double, whichever `number` is.
OrderedJson valueJson(const KorvaniPlatform::Number& number);
OrderedJson valueJson(const KorvaniPlatform::Value& value);
/// An object with the entries in the dictionary's order.
OrderedJson valueJson(const KorvaniPlatform::Dictionary& dictionary);

/// `{"lat", "lon", "level", "id"}`. Points without an identifier, and those that only have one
/// inside a route's own graph (a negative one), get the id -1.
OrderedJson pointJson(const KorvaniNavigation::KRVNavPoint& point);

/// `{"start", "end", "distance", "timeMultiplicator", "barrierFree", "levelChange", "heading",
/// "neighborType"}`.
OrderedJson stepJson(const KorvaniNavigation::Step& step);

/// `{"steps", "points", "totalDistance", "travelTime", "directions"}`; an instruction is its
/// own dictionary.
OrderedJson routeJson(const KorvaniNavigation::Route& route);

/// null without a route.
OrderedJson routeJson(const std::optional<KorvaniNavigation::Route>& route);

/// `json` on one line, without a line feed.
std::string jsonText(const OrderedJson& json);

}  // namespace KorvaniTools
