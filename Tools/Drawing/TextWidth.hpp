#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace KorvaniTools {

/// How wide `text` is in a usual sans-serif font of that size, in pixels: an estimate that errs
/// on the wide side.
double textWidth(std::string_view text, double fontSize, bool bold);

/// As much of `text` as is at most `pixels` wide, with an ellipsis when something was cut off.
std::string shortened(std::string_view text, double fontSize, bool bold, double pixels);

/// `text` in lines of at most `pixels` each, broken at blanks; a longer word is cut with an
/// ellipsis. At least one line.
std::vector<std::string> wrapped(std::string_view text, double fontSize, bool bold, double pixels);

}  // namespace KorvaniTools
