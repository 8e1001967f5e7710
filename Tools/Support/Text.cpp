#include "Support/Text.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numeric>

namespace KorvaniTools {
namespace {

char smallLetter(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// The characters of UTF-8 text, each as its bytes.
std::vector<std::string_view> characters(std::string_view text) {
  std::vector<std::string_view> result;
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = start + 1;
    while (end < text.size() && continuesCharacter(text[end])) ++end;
    result.push_back(text.substr(start, end - start));
    start = end;
  }
  return result;
}

/// `number` as printf writes it.
std::string printed(const char* format, double number) {
  std::array<char, 400> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, number);
  return buffer.data();
}

}  // namespace

std::string foldedCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), smallLetter);
  return result;
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const auto end = text.find(separator);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

std::optional<double> parseNumber(std::string_view text) {
  const std::string number(trimmed(text));
  if (number.empty() || number.find_first_of("xX") != std::string::npos) return {};
  char* end = nullptr;
  const double value = std::strtod(number.c_str(), &end);
  if (end != number.c_str() + number.size()) return {};
  return value;
}

std::optional<std::int64_t> parseWholeNumber(std::string_view text) {
  const auto number = parseNumber(text);
  if (!number || *number != std::trunc(*number) || std::abs(*number) >= 0x1p63) return {};
  return static_cast<std::int64_t>(*number);
}

std::size_t editDistance(std::string_view a, std::string_view b) {
  const std::string foldedA = foldedCase(a);
  const std::string foldedB = foldedCase(b);
  const auto lettersA = characters(foldedA);
  const auto lettersB = characters(foldedB);
  std::vector<std::size_t> row(lettersB.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < lettersA.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < lettersB.size(); ++j) {
      const std::size_t changed = diagonal + (lettersA[i] == lettersB[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::string metres(double distance) {
  if (!std::isfinite(distance)) return "an unknown number of metres";
  // No building is that large; the digits of such a number would mean nothing.
  return printed(std::abs(distance) < 1e9 ? "%.0f m" : "%.3g m", std::round(distance));
}

std::string duration(double seconds) {
  if (!std::isfinite(seconds)) return "an unknown time";
  const double whole = std::round(seconds);
  const double minutes = std::floor(whole / 60);
  if (minutes < 1) return printed("%.0f s", whole);
  if (minutes < 60) {
    const double rest = whole - minutes * 60;
    return printed("%.0f min", minutes) + (rest > 0 ? printed(" %.0f s", rest) : "");
  }
  const double hours = std::floor(minutes / 60);
  const double rest = minutes - hours * 60;
  return printed("%.0f h", hours) + (rest > 0 ? printed(" %.0f min", rest) : "");
}

std::string compassPoint(double heading) {
  static constexpr std::array<const char*, 8> kPoints{"north", "north-east", "east", "south-east",
                                                      "south", "south-west", "west", "north-west"};
  const double turns = heading / 360 - std::floor(heading / 360);
  return kPoints[static_cast<std::size_t>(std::lround(turns * 8)) % kPoints.size()];
}

std::string decimals(double number) {
  std::string text = printed("%.8f", number);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::size_t width(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char byte) { return !continuesCharacter(byte); }));
}

}  // namespace KorvaniTools
