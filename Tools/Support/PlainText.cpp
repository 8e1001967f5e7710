#include "Support/PlainText.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "Support/Utf8.hpp"

namespace KorvaniTools {
namespace {

/// Control characters; the second block of them is as good as the first for many terminals.
bool isControl(std::uint32_t code) { return code < 0x20 || (code >= 0x7F && code < 0xA0); }

/// Separators of lines and paragraphs, and what changes the writing direction of all that follows
/// up to the end of the line.
bool rearrangesLine(std::uint32_t code) {
  return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string escaped(const char* format, unsigned number) {
  std::array<char, 16> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, number);
  return buffer.data();
}

std::string escapedControl(std::uint32_t code) {
  if (code == '\n') return "\\n";
  if (code == '\r') return "\\r";
  if (code == '\t') return "\\t";
  return escaped("\\x%02x", code);
}

std::string plain(std::string_view text, bool keepsLines) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const Utf8Character character = utf8At(text, i);
    if (!character.valid) {
      result += escaped("\\x%02x", static_cast<unsigned char>(text[i]));
    } else if (keepsLines && character.code == '\n') {
      result += '\n';
    } else if (isControl(character.code)) {
      result += escapedControl(character.code);
    } else if (rearrangesLine(character.code)) {
      result += escaped("\\u%04x", character.code);
    } else {
      result += text.substr(i, character.length);
    }
    i += character.length;
  }
  return result;
}

}  // namespace

std::string plainLine(std::string_view text) { return plain(text, false); }

std::string plainLines(std::string_view text) { return plain(text, true); }

}  // namespace KorvaniTools
