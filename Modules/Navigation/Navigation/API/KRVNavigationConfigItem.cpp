#include "Navigation/API/KRVNavigationConfigItem.hpp"

#include "Navigation/API/Config.hpp"

namespace KorvaniNavigation {

namespace {

using KorvaniPlatform::Number;

/// Everything there is to know about one item; a row of the table below.
struct ItemRow {
  std::string_view rawValue;
  std::string_view title;
  std::string_view shortDescription;
  Number (*defaultValue)();
  Number (*read)(const Config&);
  void (*write)(Config&, const Number&);
};

Number off() { return Number::boolean(false); }

constexpr ItemRow kRows[] = {
    {"navigationTargetProximityDistance", "Nav Target Proximity Distance",
     "Distance until arriving at destination", [] { return Number::real(5.0); },
     [](const Config& c) { return Number::real(c.targetProximityDistance()); },
     [](Config& c, const Number& n) { c.setTargetProximityDistance(n.doubleValue()); }},
    {"navigationActivateBarrierFreeNavigation", "Activate Barrier Free Navigation",
     "Barrier Free Navigation", off,
     [](const Config& c) { return Number::boolean(c.activateBarrierFreeNavigation()); },
     [](Config& c, const Number& n) { c.setActivateBarrierFreeNavigation(n.boolValue()); }},
    {"navigationActivateRouteOptimisation", "Activate Route Optimisation",
     "Optimised Navigation Paths", off,
     [](const Config& c) { return Number::boolean(c.activateRouteOptimisation()); },
     [](Config& c, const Number& n) { c.setActivateRouteOptimisation(n.boolValue()); }},
    {"activateNavigationPathSnapping", "Navigation Path Snapping",
     "Snap the user location to nearest path, if near enough", off,
     [](const Config& c) { return Number::boolean(c.activateNavigationPathSnapping()); },
     [](Config& c, const Number& n) { c.setActivateNavigationPathSnapping(n.boolValue()); }},
    {"navigationPathSnappingDistance", "Navigation Path Snapping Distance", "",
     [] { return Number::real(5.0); },
     [](const Config& c) { return Number::real(c.navigationPathSnappingDistance()); },
     [](Config& c, const Number& n) { c.setNavigationPathSnappingDistance(n.doubleValue()); }},
    {"navigationActivateMagneticSnapping", "Magnetic Path Snapping", "Try to stick to old segment",
     off, [](const Config& c) { return Number::boolean(c.activateMagneticSnapping()); },
     [](Config& c, const Number& n) { c.setActivateMagneticSnapping(n.boolValue()); }},
    {"navigationMagneticPathSnappingFallbackThreshold", "Magnetic Path Snapping Fallback", "",
     [] { return Number::integer(5); },
     [](const Config& c) { return Number::integer(c.magneticPathSnappingFallbackThreshold()); },
     [](Config& c, const Number& n) {
       c.setMagneticPathSnappingFallbackThreshold(n.integerValue());
     }},
    {"navigationMagneticPathSnappingDistanceThreshold", "Magnetic Path Snapping Distance", "",
     [] { return Number::real(3.0); },
     [](const Config& c) { return Number::single(c.magneticPathSnappingDistanceThreshold()); },
     [](Config& c, const Number& n) {
       c.setMagneticPathSnappingDistanceThreshold(n.floatValue());
     }},
    {"activateObstacleChecking", "Obstacle Checking", "Avoids \"jumping\" through walls", off,
     [](const Config& c) { return Number::boolean(c.activateObstacleChecking()); },
     [](Config& c, const Number& n) { c.setActivateObstacleChecking(n.boolValue()); }},
};

/// The number in `value`, or a double 0.0 when there is none.
Number numberOr0(const std::optional<KorvaniPlatform::Value>& value) {
  const Number* number = value ? value->number() : nullptr;
  return number ? *number : Number::real(0.0);
}

/// The text in `value`, or the empty one when there is none.
std::string textOrEmpty(const std::optional<KorvaniPlatform::Value>& value) {
  const std::string* text = value ? value->string() : nullptr;
  return text ? *text : std::string();
}

}  // namespace

using Item = KRVNavigationConfigItem;

constexpr Item Item::navigationTargetProximityDistance{navigationTargetProximityDistanceCase};
constexpr Item Item::navigationActivateBarrierFreeNavigation{
    navigationActivateBarrierFreeNavigationCase};
constexpr Item Item::navigationActivateRouteOptimisation{navigationActivateRouteOptimisationCase};
constexpr Item Item::activateNavigationPathSnapping{activateNavigationPathSnappingCase};
constexpr Item Item::navigationPathSnappingDistance{navigationPathSnappingDistanceCase};
constexpr Item Item::navigationActivateMagneticSnapping{navigationActivateMagneticSnappingCase};
constexpr Item Item::navigationMagneticPathSnappingFallbackThreshold{
    navigationMagneticPathSnappingFallbackThresholdCase};
constexpr Item Item::navigationMagneticPathSnappingDistanceThreshold{
    navigationMagneticPathSnappingDistanceThresholdCase};
constexpr Item Item::activateObstacleChecking{activateObstacleCheckingCase};

constexpr std::array<Item, 9> Item::allCases{Item::navigationTargetProximityDistance,
                                             Item::navigationActivateBarrierFreeNavigation,
                                             Item::navigationActivateRouteOptimisation,
                                             Item::activateNavigationPathSnapping,
                                             Item::navigationPathSnappingDistance,
                                             Item::navigationActivateMagneticSnapping,
                                             Item::navigationMagneticPathSnappingFallbackThreshold,
                                             Item::navigationMagneticPathSnappingDistanceThreshold,
                                             Item::activateObstacleChecking};

std::optional<Item> Item::fromRawValue(std::string_view rawValue) {
  for (const Item item : allCases) {
    if (item.rawValue() == rawValue) return item;
  }
  return std::nullopt;
}

std::string_view Item::rawValue() const { return kRows[case_].rawValue; }

std::string Item::title() const {
  return textOrEmpty(performAction(KRVCommonConfigItemAction::title, nullptr, std::nullopt));
}

std::string Item::shortDescription() const {
  return textOrEmpty(
      performAction(KRVCommonConfigItemAction::shortDescription, nullptr, std::nullopt));
}

Number Item::defaultValue() const {
  return numberOr0(performAction(KRVCommonConfigItemAction::defaultValue, nullptr, std::nullopt));
}

Number Item::value(const Config& config) const { return kRows[case_].read(config); }

void Item::setValue(const Number& number, Config& config) const {
  performAction(KRVCommonConfigItemAction::setValue, &config, number);
}

std::optional<KorvaniPlatform::Value> Item::performAction(
    KRVCommonConfigItemAction action, Config* config,
    const std::optional<Number>& parameter) const {
  const ItemRow& row = kRows[case_];
  switch (action) {
    case KRVCommonConfigItemAction::title:
      return Value(std::string(row.title));
    case KRVCommonConfigItemAction::shortDescription:
      return Value(std::string(row.shortDescription));
    case KRVCommonConfigItemAction::defaultValue:
      return Value(row.defaultValue());
    case KRVCommonConfigItemAction::getValue:
      return Value(config ? row.read(*config) : Number::real(0.0));
    case KRVCommonConfigItemAction::setValue:
      if (config && parameter) row.write(*config, *parameter);
      return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace KorvaniNavigation
