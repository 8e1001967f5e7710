# Puts the viewer's page into a C++ source.
#
#   cmake -D FOLDER=Page -D OUTPUT=ViewerSources.cpp -D "SCRIPTS=a.js b.js" -D "STYLES=a.css b.css"
#     -P EmbedViewer.cmake
#
# The scripts become one, in that order, in a scope of its own; it is left beside the output, as
# OUTPUT.js. So do the styles, as OUTPUT.css. The source has the files byte by byte, so that they may hold whatever they like.

# The base64 form of bytes in hexadecimal digits.
function(base64 hex result)
  set(alphabet "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  set(text "")
  string(LENGTH "${hex}" length)
  set(begin 0)
  while(begin LESS length)
    string(SUBSTRING "${hex}" ${begin} 6 group)
    string(LENGTH "${group}" digits)
    math(EXPR letters "${digits} / 2 + 1")
    string(SUBSTRING "${group}0000" 0 6 group)
    foreach(shift IN ITEMS 18 12 6 0)
      if(letters GREATER 0)
        math(EXPR index "(0x${group} >> ${shift}) & 63")
        string(SUBSTRING "${alphabet}" ${index} 1 letter)
        string(APPEND text "${letter}")
      else()
        string(APPEND text "=")
      endif()
      math(EXPR letters "${letters} - 1")
    endforeach()
    math(EXPR begin "${begin} + 6")
  endwhile()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

# The bytes of a file as a C++ function that gives them.
function(embedded path function result)
  file(READ "${path}" hex HEX)
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${hex}")
  set(${result}
      "std::string_view ${function}() {
  static constexpr unsigned char kBytes[] = {${bytes}0};
  return {reinterpret_cast<const char*>(kBytes), sizeof kBytes - 1};
}

"
      PARENT_SCOPE)
endfunction()

set(script "'use strict';\n(() => {\n")
separate_arguments(SCRIPTS)
foreach(name IN LISTS SCRIPTS)
  file(READ "${FOLDER}/${name}" text)
  string(APPEND script "${text}")
endforeach()
string(APPEND script "})();\n")
# A browser hashes what it reads, and reads every line end as a line feed.
string(REPLACE "\r" "" script "${script}")
# In a page a script ends at its end tag whatever stands around it, and a comment's begin changes
# the rules.
string(TOLOWER "${script}" folded)
foreach(forbidden IN ITEMS "</script" "<script" "<!--")
  string(FIND "${folded}" "${forbidden}" found)
  if(NOT found EQUAL -1)
    message(FATAL_ERROR "${FOLDER}: found ${forbidden}, which cannot stand in a page's script")
  endif()
endforeach()
file(WRITE "${OUTPUT}.js" "${script}")
set(style "")
separate_arguments(STYLES)
foreach(name IN LISTS STYLES)
  file(READ "${FOLDER}/${name}" text)
  string(APPEND style "${text}")
endforeach()
file(WRITE "${OUTPUT}.css" "${style}")
file(SHA256 "${OUTPUT}.js" digest)
base64("${digest}" hash)

embedded("${FOLDER}/viewer.html" viewerHtml html)
embedded("${OUTPUT}.css" viewerStyle style)
embedded("${OUTPUT}.js" viewerScript embeddedScript)
file(WRITE "${OUTPUT}" "// Made from the files of the folder Page.

#include \"Drawing/Viewer/ViewerSources.hpp\"

namespace KorvaniTools {

${html}${style}${embeddedScript}std::string_view viewerScriptHash() { return \"sha256-${hash}\"; }

}  // namespace KorvaniTools
")
