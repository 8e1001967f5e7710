#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "Common/ConfigItemAction.hpp"
#include "Platform/Export.hpp"
#include "Platform/Value.hpp"

namespace KorvaniNavigation {

class Config;

/// The settable fields of a `Config`, by key.
///
/// A settings screen or a command line lists the items, shows their titles and descriptions,
/// and reads and writes their values as boxed numbers without knowing the fields:
///
///     for (const auto item : KRVNavigationConfigItem::allCases)
///       std::cout << item.rawValue() << ": " << item.title() << '\n';
///     if (auto item = KRVNavigationConfigItem::fromRawValue("activateObstacleChecking"))
///       item->setValue(Number::boolean(true), config);
///
/// An item is a small value, compared by ==. The keys are what hosts store, with their uneven
/// use of the "navigation" prefix; they never change. Any thread may use any item.
class KORVANI_API KRVNavigationConfigItem {
 public:
  using KRVCommonConfigItemAction = KorvaniCommon::KRVCommonConfigItemAction;
  using Number = KorvaniPlatform::Number;
  using Value = KorvaniPlatform::Value;

  /// The cases; the enumerator is also the item's hash value, 0 to 8.
  enum Case : int {
    navigationTargetProximityDistanceCase,
    navigationActivateBarrierFreeNavigationCase,
    navigationActivateRouteOptimisationCase,
    activateNavigationPathSnappingCase,
    navigationPathSnappingDistanceCase,
    navigationActivateMagneticSnappingCase,
    navigationMagneticPathSnappingFallbackThresholdCase,
    navigationMagneticPathSnappingDistanceThresholdCase,
    activateObstacleCheckingCase,
  };

  static const KRVNavigationConfigItem navigationTargetProximityDistance;
  static const KRVNavigationConfigItem navigationActivateBarrierFreeNavigation;
  static const KRVNavigationConfigItem navigationActivateRouteOptimisation;
  static const KRVNavigationConfigItem activateNavigationPathSnapping;
  static const KRVNavigationConfigItem navigationPathSnappingDistance;
  static const KRVNavigationConfigItem navigationActivateMagneticSnapping;
  static const KRVNavigationConfigItem navigationMagneticPathSnappingFallbackThreshold;
  static const KRVNavigationConfigItem navigationMagneticPathSnappingDistanceThreshold;
  static const KRVNavigationConfigItem activateObstacleChecking;

  /// All nine items in the order of their hash values.
  static const std::array<KRVNavigationConfigItem, 9> allCases;

  /// The item with that key; none for any other text.
  static std::optional<KRVNavigationConfigItem> fromRawValue(std::string_view rawValue);

  constexpr explicit KRVNavigationConfigItem(Case value) : case_(value) {}

  /// The item's key.
  std::string_view rawValue() const;

  /// 0 to 8, the item's place among all cases.
  constexpr int hashValue() const { return case_; }

  /// What a settings screen shows as the item's name.
  std::string title() const;

  /// One sentence about the item, or the empty string.
  std::string shortDescription() const;

  /// The default, boxed: a boolean, a double or an integer. The default of
  /// `navigationMagneticPathSnappingDistanceThreshold` is boxed as a double although the
  /// field is single precision.
  Number defaultValue() const;

  /// The value in `config`, boxed by the field's own type.
  Number value(const Config& config) const;

  /// Writes `number` into `config`, converted to the field's own type.
  void setValue(const Number& number, Config& config) const;

  /// The one routine behind all of the above.
  ///
  /// @param config needed by `getValue` (a double 0.0 without it) and `setValue`
  /// @param parameter the number to write; needed by `setValue`
  /// @return the text or number asked for; nothing for `setValue`, which changes nothing
  ///     when `config` or `parameter` is missing
  std::optional<Value> performAction(KRVCommonConfigItemAction action, Config* config,
                                     const std::optional<Number>& parameter) const;

  friend constexpr bool operator==(KRVNavigationConfigItem a, KRVNavigationConfigItem b) {
    return a.case_ == b.case_;
  }

 private:
  Case case_;
};

}  // namespace KorvaniNavigation
