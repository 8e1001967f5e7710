#include "Drawing/Viewer/PageTemplate.hpp"

#include <stdexcept>

namespace KorvaniTools {

std::string filledIn(std::string_view page, const std::map<std::string, std::string>& texts) {
  std::string text;
  while (true) {
    const std::size_t begin = page.find("{{");
    text += page.substr(0, begin);
    if (begin == std::string_view::npos) return text;
    const std::size_t end = page.find("}}", begin);
    if (end == std::string_view::npos) throw std::logic_error("a gap of the page has no end");
    const std::string name(page.substr(begin + 2, end - begin - 2));
    const auto found = texts.find(name);
    if (found == texts.end()) throw std::logic_error("no text for the gap " + name);
    text += found->second;
    page.remove_prefix(end + 2);
  }
}

std::string scriptSafe(std::string_view json) {
  std::string safe;
  safe.reserve(json.size());
  for (std::size_t i = 0; i < json.size(); ++i) {
    const std::string_view rest = json.substr(i, 3);
    if (json[i] == '<') {
      safe += "\\u003c";
    } else if (json[i] == '>') {
      safe += "\\u003e";
    } else if (json[i] == '&') {
      safe += "\\u0026";
    } else if (rest == "\xE2\x80\xA8" || rest == "\xE2\x80\xA9") {
      safe += rest == "\xE2\x80\xA8" ? "\\u2028" : "\\u2029";
      i += 2;
    } else {
      safe += json[i];
    }
  }
  return safe;
}

}  // namespace KorvaniTools
