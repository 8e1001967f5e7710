#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KorvaniTools {

/// Small operations on text as people type and read it. All text is UTF-8.

/// `text` with ASCII capitals made small; other letters stay.
std::string foldedCase(std::string_view text);

/// `text` without blanks at its ends.
std::string_view trimmed(std::string_view text);

/// The pieces between the separators, at least one.
std::vector<std::string_view> split(std::string_view text, char separator);

/// The number that all of `text` is, in decimal notation; also "nan", "inf" and numbers too
/// large for a double (infinite). None for anything else, blanks at the ends aside.
std::optional<double> parseNumber(std::string_view text);

/// The integer that all of `text` is equal to ("2", "-1", "2.0"). None for anything else.
std::optional<std::int64_t> parseWholeNumber(std::string_view text);

/// How many letters must be put in, left out or changed to make `b` from `a`; capitals do not
/// matter. Cost: product of the lengths.
std::size_t editDistance(std::string_view a, std::string_view b);

/// `count` and the noun that goes with it: "1 node", "2 nodes".
std::string counted(std::size_t count, const std::string& one, const std::string& many);

/// A number of whole metres, rounded: "12 m". Beyond all sense it is "1e+20 m", and what is not
/// finite is "an unknown number of metres".
std::string metres(double distance);

/// A time as people say it: "45 s", "2 min 5 s", "1 h 3 min"; "an unknown time" when it is not
/// finite.
std::string duration(double seconds);

/// The compass direction of a heading in degrees, one of eight: "north-east".
std::string compassPoint(double heading);

/// A coordinate's or other number's shortest decimal notation with at most 8 decimals.
std::string decimals(double number);

/// How many columns `text` takes on a terminal: its characters, each taken as one wide.
std::size_t width(std::string_view text);

}  // namespace KorvaniTools
