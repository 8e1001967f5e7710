#pragma once

/// Internal. From a building file's text to JSON values, with errors that name the feature.

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace KorvaniTools {

using Json = nlohmann::json;

/// Parses `text`.
/// @throws BuildingError naming the feature in which the text stops to be JSON, or in which a
///     number stands that a double cannot hold
Json parseJsonText(std::string_view text, const std::string& file);

/// A short form of `value` for error messages; "nothing" for null.
std::string brief(const Json& value);

/// `text` in quotation marks, shortened when it is long.
std::string inQuotes(std::string_view text);

/// The integer that `value` is equal to: 3, 3.0 and 3e0 are all 3. None when it is not a
/// number, not whole or too large for 64 bits.
std::optional<std::int64_t> wholeNumber(const Json& value);

}  // namespace KorvaniTools
