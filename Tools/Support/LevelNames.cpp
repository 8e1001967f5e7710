#include "Support/LevelNames.hpp"

#include <cmath>

#include "Support/Text.hpp"

namespace KorvaniTools {

LevelNames::LevelNames(const Building& building) {
  for (const LevelName& entry : building.levelNames) {
    if (entry.name && !entry.name->empty()) names_.emplace(entry.level, *entry.name);
    const auto number = entry.source ? parseNumber(*entry.source) : std::nullopt;
    if (number && std::isfinite(*number)) numbers_.emplace(entry.level, decimals(*number));
  }
}

std::string LevelNames::name(std::int64_t level) const {
  const auto found = names_.find(level);
  return found == names_.end() ? std::string() : found->second;
}

std::string LevelNames::number(std::int64_t level) const {
  const auto found = numbers_.find(level);
  return found == numbers_.end() ? std::to_string(level) : found->second;
}

std::string LevelNames::words(std::int64_t level) const {
  const std::string number = this->number(level);
  std::string plain = "level " + number;
  const std::string called = name(level);
  const std::string folded = foldedCase(called);
  if (called.empty() || folded == number || folded == plain) return plain;
  return plain + ", " + called;
}

std::optional<std::int64_t> LevelNames::find(std::string_view text) const {
  if (const auto number = parseWholeNumber(text)) return number;
  const std::string wanted = foldedCase(text);
  for (const auto& [level, name] : names_) {
    if (foldedCase(name) == wanted) return level;
  }
  for (const auto& [level, number] : numbers_) {
    if (foldedCase(words(level)) == wanted || number == wanted) return level;
  }
  return {};
}

}  // namespace KorvaniTools
