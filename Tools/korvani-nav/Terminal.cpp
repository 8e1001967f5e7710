#include "korvani-nav/Terminal.hpp"

#include <unistd.h>

#include <cstdlib>

namespace KorvaniTools {

Style Style::forStandardOutput() {
  const char* noColour = std::getenv("NO_COLOR");
  if (noColour != nullptr && *noColour != '\0') return Style(false);
  const char* terminal = std::getenv("TERM");
  if (terminal == nullptr || std::string_view(terminal) == "dumb") return Style(false);
  return Style(isatty(STDOUT_FILENO) == 1);
}

std::string Style::coloured(const char* code, std::string_view text) const {
  if (!on_ || text.empty()) return std::string(text);
  return "\x1b[" + std::string(code) + 'm' + std::string(text) + "\x1b[0m";
}

}  // namespace KorvaniTools
