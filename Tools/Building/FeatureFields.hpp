#pragma once

/// Internal. Typed access to one feature's properties and positions; whatever is wrong with
/// them is thrown as a `BuildingError` that names file and feature.

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Building/Building.hpp"
#include "Building/JsonText.hpp"

namespace KorvaniTools {

inline constexpr std::int64_t kLowestLevel = -1000;
inline constexpr std::int64_t kHighestLevel = 1000;

/// Where errors say that they were found.
struct ErrorPlace {
  const std::string& file;
  std::optional<std::size_t> feature;

  [[noreturn]] void fail(std::string subject, std::string found, std::string expected) const;
};

/// The members of one JSON object, read by name; null counts as absent. `owner` names the
/// object in errors ("node").
class Fields {
 public:
  Fields(const Json& object, std::string owner, ErrorPlace place);

  /// The member's value; null when it is absent.
  const Json* find(const char* key) const;

  std::int64_t requiredInteger(const char* key) const;
  std::int64_t requiredLevel() const;
  std::string requiredString(const char* key) const;
  std::optional<std::string> optionalString(const char* key) const;
  std::int64_t integerOr(const char* key, std::int64_t absent) const;
  bool booleanOr(const char* key, bool absent) const;
  /// A number above 0, in words `expected`.
  std::optional<double> optionalPositive(const char* key, const char* expected) const;

  [[noreturn]] void fail(const char* key, std::string found, std::string expected) const;
  const ErrorPlace& place() const { return place_; }
  const std::string& owner() const { return owner_; }

 private:
  const Json& required(const char* key, const char* expected) const;

  const Json& object_;
  std::string owner_;
  ErrorPlace place_;
};

using Positions = std::vector<Coordinate>;

/// A feature's geometry, whose type has been looked at and whose positions are yet to be read.
class Geometry {
 public:
  Geometry(const Json& feature, std::string owner, ErrorPlace place);

  /// The geometry's type when it is one of `allowed`; an error otherwise.
  std::string type(std::initializer_list<const char*> allowed) const;

  Coordinate point() const;
  /// At least one position.
  Positions lineString() const;
  /// At least one ring, each of at least one position.
  std::vector<Positions> polygon() const;
  /// The one polygon of a Polygon, or those of a MultiPolygon: at least one.
  std::vector<std::vector<Positions>> polygons() const;

 private:
  const Json& coordinates() const;
  Coordinate position(const Json& value) const;
  Positions positions(const Json& value) const;
  std::vector<Positions> rings(const Json& value) const;
  [[noreturn]] void fail(std::string found, std::string expected) const;

  const Json* geometry_ = nullptr;
  std::string owner_;
  ErrorPlace place_;
};

}  // namespace KorvaniTools
