#pragma once

/// Internal. Pages with gaps.

#include <map>
#include <string>
#include <string_view>

namespace KorvaniTools {

/// `page` with every `{{name}}` replaced by the text of that name. What is filled in is not looked
/// through again, so it may hold anything.
/// @throws std::logic_error when there is no text of that name, or `}}` is missing
std::string filledIn(std::string_view page, const std::map<std::string, std::string>& texts);

/// `json` so that it can stand in a page's `<script>`: nothing in it ends the element or begins a
/// comment, and no character in it ends a line of script.
std::string scriptSafe(std::string_view json);

}  // namespace KorvaniTools
