#include "Support/Utf8.hpp"

#include <array>

namespace KorvaniTools {
namespace {

unsigned byteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

std::size_t lengthAfter(unsigned lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  if (lead >= 0xF0 && lead < 0xF5) return 4;
  return 0;
}

}  // namespace

Utf8Character utf8At(std::string_view text, std::size_t index) {
  const unsigned lead = byteAt(text, index);
  const std::size_t length = lengthAfter(lead);
  if (length == 0 || index + length > text.size()) return {};
  constexpr std::array<unsigned, 5> kMasks{0, 0x7F, 0x1F, 0x0F, 0x07};
  std::uint32_t code = lead & kMasks[length];
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned next = byteAt(text, index + i);
    if ((next & 0xC0U) != 0x80U) return {};
    code = (code << 6U) | (next & 0x3FU);
  }
  constexpr std::array<std::uint32_t, 5> kLeast{0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code < 0xE000;
  if (code < kLeast[length] || code > 0x10FFFF || surrogate) return {};
  return {length, code, true};
}

}  // namespace KorvaniTools
