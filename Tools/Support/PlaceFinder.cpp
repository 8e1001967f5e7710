#include "Support/PlaceFinder.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <utility>

#include "Support/InputError.hpp"
#include "Support/PlainText.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

std::string coordinateText(Coordinate coordinate) {
  return decimals(coordinate.latitude) + ',' + decimals(coordinate.longitude);
}

std::string inQuotationMarks(std::string_view text) { return '"' + plainLine(text) + '"'; }

/// The numbers of `text` when it is nothing but numbers between commas.
std::vector<double> numbersOf(std::string_view text) {
  std::vector<double> numbers;
  for (const std::string_view piece : split(text, ',')) {
    const auto number = parseNumber(piece);
    if (!number) return {};
    numbers.push_back(*number);
  }
  return numbers;
}

void requireRange(double value, double limit, const char* what, std::string_view text) {
  if (std::abs(value) <= limit) return;  // false for what is not a number
  throw InputError(std::string(what) + " in " + inQuotationMarks(text) +
                   ": expected a number from " + decimals(-limit) + " to " + decimals(limit));
}

std::optional<Spot> coordinatesIn(std::string_view text) {
  const std::vector<double> numbers = numbersOf(text);
  if (numbers.size() != 3) return {};
  requireRange(numbers[0], 90, "latitude", text);
  requireRange(numbers[1], 180, "longitude", text);
  requireRange(numbers[2], 1000, "level", text);
  if (numbers[2] != std::trunc(numbers[2])) {
    throw InputError("level in " + inQuotationMarks(text) + ": expected a whole number");
  }
  const Coordinate coordinate{numbers[0], numbers[1]};
  const auto level = static_cast<std::int64_t>(numbers[2]);
  return Spot{coordinateText(coordinate), coordinate, level};
}

bool sameSpot(const Place* a, const Place* b) {
  return a->level == b->level && a->coordinate == b->coordinate && a->name == b->name;
}

}  // namespace

PlaceFinder::PlaceFinder(const Building& building, LevelNames levels)
    : building_(building), levels_(std::move(levels)) {}

Spot PlaceFinder::find(std::string_view text) const {
  if (auto spot = coordinatesIn(text)) return *spot;
  Matches matches = named(text);
  if (matches.empty()) matches = namedOnLevel(text);
  if (matches.empty()) refuseUnknown(text);
  const bool same = std::all_of(matches.begin(), matches.end(), [&](const Place* other) {
    return sameSpot(matches.front(), other);
  });
  if (!same) refuseAmbiguous(text, matches);
  const Place& place = *matches.front();
  return {place.name, place.coordinate, place.level};
}

PlaceFinder::Matches PlaceFinder::named(std::string_view name) const {
  Matches exact;
  Matches similar;
  const std::string folded = foldedCase(name);
  for (const Place& place : building_.places) {
    if (place.name == name) exact.push_back(&place);
    if (foldedCase(place.name) == folded) similar.push_back(&place);
  }
  return exact.empty() ? similar : exact;
}

PlaceFinder::Matches PlaceFinder::namedOnLevel(std::string_view text) const {
  const auto at = text.rfind('@');
  if (at == std::string_view::npos) return {};
  const auto level = levels_.find(trimmed(text.substr(at + 1)));
  if (!level) return {};
  const std::string_view name = trimmed(text.substr(0, at));
  Matches matches = named(name);
  if (matches.empty()) refuseUnknown(name);
  const Matches everywhere = matches;
  std::erase_if(matches, [&](const Place* place) { return place->level != *level; });
  if (matches.empty()) {
    std::string message =
        inQuotationMarks(name) + " is not on " + plainLine(levels_.words(*level)) + "; it is on";
    std::set<std::int64_t> others;
    for (const Place* place : everywhere) others.insert(place->level);
    const char* separator = " ";
    for (const std::int64_t other : others) {
      message += separator + plainLine(levels_.words(other));
      separator = ", ";
    }
    throw InputError(message);
  }
  return matches;
}

std::vector<std::string> PlaceFinder::closestNames(std::string_view name, std::size_t count) const {
  const std::string wanted = foldedCase(name);
  std::set<std::pair<std::size_t, std::string>> ranked;
  for (const Place& place : building_.places) {
    // A part of a name is closer to it than any slip of the finger.
    const bool part = !wanted.empty() && foldedCase(place.name).find(wanted) != std::string::npos;
    ranked.emplace(part ? 1 : 1 + editDistance(name, place.name), place.name);
  }
  std::vector<std::string> names;
  for (const auto& [rank, candidate] : ranked) {
    if (names.size() == count || rank != ranked.begin()->first) break;
    names.push_back(candidate);
  }
  return names;
}

void PlaceFinder::refuseUnknown(std::string_view text) const {
  std::string message = "no place is called " + inQuotationMarks(text);
  const auto closest = closestNames(text, 3);
  if (numbersOf(text).size() > 1) {
    message += "; coordinates are written LAT,LON,LEVEL";
  } else if (closest.empty()) {
    message += "; the building has no places, write LAT,LON,LEVEL";
  } else {
    message += "; did you mean ";
    for (std::size_t i = 0; i < closest.size(); ++i) {
      const char* separator = i == 0 ? "" : i + 1 == closest.size() ? " or " : ", ";
      message += separator + inQuotationMarks(closest[i]);
    }
    message += '?';
  }
  throw InputError(message);
}

void PlaceFinder::refuseAmbiguous(std::string_view text, const Matches& matches) const {
  std::string message =
      inQuotationMarks(text) + " is the name of several places; write one of these instead:";
  for (const Place* place : matches) {
    const std::string coordinates =
        coordinateText(place->coordinate) + ',' + std::to_string(place->level);
    const auto onLevel = std::count_if(matches.begin(), matches.end(), [&](const Place* other) {
      return other->level == place->level && other->name == place->name;
    });
    message += "\n  ";
    if (onLevel == 1) {
      message +=
          plainLine(place->name) + '@' + std::to_string(place->level) + "  at " + coordinates;
    } else {
      message += coordinates + "  on " + plainLine(levels_.words(place->level));
    }
  }
  throw InputError(message);
}

}  // namespace KorvaniTools
