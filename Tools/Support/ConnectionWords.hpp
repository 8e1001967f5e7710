#pragma once

/// Internal. How people speak of the kinds of connections that building data names.

#include <string>
#include <string_view>

namespace KorvaniTools {

/// A change of level by a connection of kind `type`, up or down to the level called `level`:
/// "take the lift up to level 2", or "go up to level 2" for a connection without a kind.
std::string levelChangeWords(std::string_view type, bool up, std::string_view level);

/// How one walks over something of kind `type` within a level: "over steps", "through the
/// entrance". Empty for an empty kind.
std::string passageWords(std::string_view type);

/// What one does at the end of a level change by a connection of kind `type` that says nothing
/// about the direction one comes out in: "leave the lift".
std::string leavingWords(std::string_view type);

}  // namespace KorvaniTools
