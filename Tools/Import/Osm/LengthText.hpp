#pragma once

#include <optional>
#include <string_view>

namespace KorvaniTools {

/// The metres that a tag such as `width` names: "0.9", "1,2 m", "90 cm". Absent for anything
/// else, and for what is not above 0 and below 1000 m.
std::optional<double> parseLength(std::string_view text);

}  // namespace KorvaniTools
