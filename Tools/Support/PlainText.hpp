#pragma once

#include <string>
#include <string_view>

namespace KorvaniTools {

/// Text from files, made safe to be read on a terminal. Names and other words of a file may hold
/// anything: line feeds that would forge lines of output, codes that make a terminal do things,
/// marks that turn the order of letters round.
///
///     std::cout << plainLine(place.name) << '\n';  // bad\n  error  Fake
///
/// What people see as text is left as it is. The rest is written out: "\n", "\r" and "\t", other
/// control characters and bytes that are not UTF-8 as "\x1b", separators of lines and marks of
/// writing direction as "\u202e". Backslashes stay, so this is for people and not to be read back;
/// JSON has escapes of its own and is written without this. Cost: linear.

/// `text` as a single line.
std::string plainLine(std::string_view text);

/// `text` with its line feeds, for texts whose lines are their author's own.
std::string plainLines(std::string_view text);

}  // namespace KorvaniTools
