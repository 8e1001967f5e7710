#include "Support/ConnectionWords.hpp"

#include <algorithm>
#include <array>

#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

struct Words {
  std::string_view type;
  std::string_view take;     ///< followed by "up to ..." or "down to ..."
  std::string_view passage;  ///< within a level
  std::string_view leave;
};

constexpr std::array<Words, 15> kWords{{
    {"", "go", "", "go on from there"},
    {"stairs", "take the stairs", "over stairs", "leave the stairs"},
    {"staircase", "take the stairs", "over stairs", "leave the stairs"},
    {"steps", "take the steps", "over steps", "leave the steps"},
    {"escalator", "take the escalator", "by escalator", "leave the escalator"},
    {"elevator", "take the lift", "through the lift", "leave the lift"},
    {"lift", "take the lift", "through the lift", "leave the lift"},
    {"ramp", "take the ramp", "over a ramp", "leave the ramp"},
    {"travelator", "take the moving walkway", "by moving walkway", "leave the moving walkway"},
    {"moving walkway", "take the moving walkway", "by moving walkway", "leave the moving walkway"},
    {"ladder", "climb the ladder", "over a ladder", "leave the ladder"},
    {"entrance", "go through the entrance", "through the entrance", "go on from there"},
    {"exit", "go through the exit", "through the exit", "go on from there"},
    {"door", "go through the door", "through a door", "go on from there"},
    {"gate", "go through the gate", "through a gate", "go on from there"},
}};

const Words* wordsFor(const std::string& type) {
  const auto found = std::find_if(kWords.begin(), kWords.end(),
                                  [&](const Words& words) { return words.type == type; });
  return found == kWords.end() ? nullptr : &*found;
}

}  // namespace

std::string levelChangeWords(std::string_view type, bool up, std::string_view level) {
  const Words* words = wordsFor(foldedCase(type));
  const std::string take =
      words != nullptr ? std::string(words->take) : "take the " + std::string(type);
  return take + (up ? " up to " : " down to ") + std::string(level);
}

std::string passageWords(std::string_view type) {
  const Words* words = wordsFor(foldedCase(type));
  return words != nullptr ? std::string(words->passage) : "by " + std::string(type);
}

std::string leavingWords(std::string_view type) {
  const Words* words = wordsFor(foldedCase(type));
  return words != nullptr ? std::string(words->leave) : "leave the " + std::string(type);
}

}  // namespace KorvaniTools
