#include "Import/Osm/LevelText.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

constexpr double kFarthestLevel = 1000;
constexpr double kLongestRange = 300;

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

std::string_view::size_type skipDigits(std::string_view text, std::string_view::size_type from) {
  while (from < text.size() && isDigit(text[from])) ++from;
  return from;
}

/// Takes a number from the front of `text`, with a sign, decimals and a decimal comma if it has
/// them. None, and `text` unchanged, when there is none.
std::optional<double> takeNumber(std::string_view& text) {
  const std::size_t sign = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
  std::size_t end = skipDigits(text, sign);
  if (end == sign) return std::nullopt;
  if (end < text.size() && (text[end] == '.' || text[end] == ',')) {
    const std::size_t decimals = skipDigits(text, end + 1);
    if (decimals == end + 1) return std::nullopt;
    end = decimals;
  }
  std::string number(text.substr(text[0] == '+' ? 1 : 0, end - (text[0] == '+' ? 1 : 0)));
  std::replace(number.begin(), number.end(), ',', '.');
  const auto value = parseNumber(number);
  if (!value || !(std::abs(*value) <= kFarthestLevel)) return std::nullopt;
  text.remove_prefix(end);
  return *value == 0 ? 0.0 : *value;  // "-0" is level 0
}

bool addRange(PlanLevelSet& levels, double from, double to) {
  const auto [low, high] = std::minmax(from, to);
  if (high - low > kLongestRange) return false;
  levels.push_back(low);
  for (auto level = std::lround(std::floor(low)) + 1; static_cast<double>(level) < high; ++level) {
    levels.push_back(static_cast<double>(level));
  }
  levels.push_back(high);
  return true;
}

/// Adds the level or range that `piece` is.
bool addPiece(PlanLevelSet& levels, std::string_view piece) {
  const auto first = takeNumber(piece);
  if (!first) return false;
  piece = trimmed(piece);
  if (piece.empty()) {
    levels.push_back(*first);
    return true;
  }
  if (piece.front() != '-') return false;
  piece = trimmed(piece.substr(1));
  const auto last = takeNumber(piece);
  return last && trimmed(piece).empty() && addRange(levels, *first, *last);
}

/// "0,5" is a level, "0, 5" and "0,5,6" are several.
bool commasSeparate(std::string_view part) {
  const std::size_t comma = part.find(',');
  if (comma == std::string_view::npos) return false;
  const std::size_t next = comma + 1;
  return part.find(',', next) != std::string_view::npos ||
         (next < part.size() && trimmed(part.substr(next, 1)).empty());
}

void sortOnce(PlanLevelSet& levels) {
  std::sort(levels.begin(), levels.end());
  levels.erase(std::unique(levels.begin(), levels.end()), levels.end());
}

}  // namespace

LevelText parseLevels(std::string_view text) {
  LevelText result;
  for (const std::string_view part : split(text, ';')) {
    for (const std::string_view each : split(part, commasSeparate(part) ? ',' : ';')) {
      const std::string_view piece = trimmed(each);
      // "0;1;" is no reason to lose a level.
      if (piece.empty() || addPiece(result.levels, piece)) continue;
      result.unread.emplace_back(piece);
    }
  }
  sortOnce(result.levels);
  return result;
}

std::string levelText(double level) { return decimals(level); }

PlanLevelSet united(const PlanLevelSet& a, const PlanLevelSet& b) {
  PlanLevelSet both;
  std::set_union(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(both));
  return both;
}

bool shareLevel(const PlanLevelSet& a, const PlanLevelSet& b) {
  return std::any_of(a.begin(), a.end(),
                     [&b](double level) { return std::binary_search(b.begin(), b.end(), level); });
}

}  // namespace KorvaniTools
