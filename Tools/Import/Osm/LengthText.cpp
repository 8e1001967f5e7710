#include "Import/Osm/LengthText.hpp"

#include <algorithm>
#include <string>

#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

constexpr double kLongest = 1000;

struct Unit {
  std::string_view name;
  double metres;
};
// "m" last: it ends the others' names too.
constexpr Unit kUnits[] = {{"mm", 0.001}, {"cm", 0.01}, {"m", 1}};

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool isPlain(std::string_view number) {
  return !number.empty() && number.find_first_not_of("0123456789.") == std::string_view::npos;
}

}  // namespace

std::optional<double> parseLength(std::string_view text) {
  text = trimmed(text);
  double factor = 1;
  for (const Unit& unit : kUnits) {
    if (!endsWith(text, unit.name)) continue;
    factor = unit.metres;
    text = trimmed(text.substr(0, text.size() - unit.name.size()));
    break;
  }
  std::string number(text);
  std::replace(number.begin(), number.end(), ',', '.');
  const auto value = isPlain(number) ? parseNumber(number) : std::nullopt;
  if (!value) return std::nullopt;
  const double metres = *value * factor;
  if (!(metres > 0 && metres < kLongest)) return std::nullopt;
  return metres;
}

}  // namespace KorvaniTools
