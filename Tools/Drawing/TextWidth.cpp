#include "Drawing/TextWidth.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "Support/Utf8.hpp"

namespace KorvaniTools {
namespace {

/// Thousandths of the font's size, from the blank to the tilde.
constexpr std::array<int, 95> kAscii{
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584};

/// Fonts differ; most are not wider than this.
constexpr double kAllowance = 1.06;
constexpr double kBold = 1.08;

constexpr auto kEllipsis = "\u2026";

struct Script {
  std::uint32_t last;
  int width;
};

/// Ranges of characters behind ASCII, each up to its last one.
constexpr std::array<Script, 9> kScripts{{
    {0x02FF, 650},    // Latin
    {0x036F, 0},      // accents that join the letter before
    {0x058F, 740},    // Greek, Cyrillic, Armenian
    {0x10FF, 800},    // scripts of the Near East and India
    {0x11FF, 1000},   // Korean letters
    {0x1FFF, 800},    // further alphabets
    {0x2DFF, 900},    // punctuation and signs
    {0xFFFF, 1020},   // Chinese, Japanese, Korean
    {0x10FFFF, 1350}  // pictures
}};

int thousandths(std::uint32_t code) {
  if (code >= 0x20 && code < 0x7F) return kAscii[code - 0x20];
  if (code < 0x7F) return kAscii[0];
  const auto script = std::find_if(kScripts.begin(), kScripts.end(),
                                   [code](const Script& each) { return code <= each.last; });
  return script == kScripts.end() ? 1000 : script->width;
}

double widthOf(const Utf8Character& character, double fontSize, bool bold) {
  const int width = character.valid ? thousandths(character.code) : 1000;
  return width / 1000.0 * fontSize * kAllowance * (bold ? kBold : 1);
}

}  // namespace

double textWidth(std::string_view text, double fontSize, bool bold) {
  double width = 0;
  for (std::size_t index = 0; index < text.size();) {
    const Utf8Character character = utf8At(text, index);
    width += widthOf(character, fontSize, bold);
    index += character.length;
  }
  return width;
}

std::string shortened(std::string_view text, double fontSize, bool bold, double pixels) {
  if (textWidth(text, fontSize, bold) <= pixels) return std::string(text);
  double width = textWidth(kEllipsis, fontSize, bold);
  std::size_t end = 0;
  while (end < text.size()) {
    const Utf8Character character = utf8At(text, end);
    width += widthOf(character, fontSize, bold);
    if (width > pixels) break;
    end += character.length;
  }
  while (end > 0 && text[end - 1] == ' ') --end;
  return std::string(text.substr(0, end)) + kEllipsis;
}

std::vector<std::string> wrapped(std::string_view text, double fontSize, bool bold, double pixels) {
  std::vector<std::string> lines{""};
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = std::min(text.find(' ', from), text.size());
    const std::string_view word = text.substr(from, end - from);
    const std::string longer = lines.back() + (lines.back().empty() ? "" : " ") + std::string(word);
    if (lines.back().empty() || textWidth(longer, fontSize, bold) <= pixels) {
      lines.back() = longer;
    } else {
      lines.emplace_back(word);
    }
    from = end + 1;
  }
  for (std::string& line : lines) line = shortened(line, fontSize, bold, pixels);
  return lines;
}

}  // namespace KorvaniTools
