#pragma once

/// Internal. The files of the folder Page, as EmbedViewer.cmake puts them into the program.

#include <string_view>

namespace KorvaniTools {

/// The page, with gaps as `filledIn` fills them.
std::string_view viewerHtml();

std::string_view viewerStyle();

/// All of the page's script.
std::string_view viewerScript();

/// The script's hash as the page's policy names it: "sha256-...".
std::string_view viewerScriptHash();

}  // namespace KorvaniTools
