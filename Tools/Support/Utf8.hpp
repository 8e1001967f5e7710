#pragma once

/// Text character by character.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KorvaniTools {

/// A character of a text. What is not UTF-8 is a character of one byte that is not valid.
struct Utf8Character {
  std::size_t length = 1;  ///< bytes
  std::uint32_t code = 0;
  bool valid = false;
};

/// The character that begins at `index`, which must lie within `text`.
Utf8Character utf8At(std::string_view text, std::size_t index);

}  // namespace KorvaniTools
