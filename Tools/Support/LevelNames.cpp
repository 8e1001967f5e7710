#include "Support/LevelNames.hpp"

#include "Support/Text.hpp"

namespace KorvaniTools {

LevelNames::LevelNames(const Building& building) {
  for (const LevelName& entry : building.levelNames) {
    if (entry.name && !entry.name->empty()) names_.emplace(entry.level, *entry.name);
  }
}

std::string LevelNames::name(std::int64_t level) const {
  const auto found = names_.find(level);
  return found == names_.end() ? std::string() : found->second;
}

std::string LevelNames::words(std::int64_t level) const {
  const std::string number = std::to_string(level);
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
  return {};
}

}  // namespace KorvaniTools
