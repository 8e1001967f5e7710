#include "Drawing/SvgWriter.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "Support/Utf8.hpp"

namespace KorvaniTools {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// What stands for the character in XML; empty when it stands for itself.
std::string_view replacementFor(const Utf8Character& character) {
  if (!character.valid) return kReplacement;
  switch (character.code) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      break;
  }
  if (character.code < 0x20 || (character.code >= 0x7F && character.code < 0xA0)) return " ";
  if (character.code >= 0xFFFE && (character.code & 0xFFFEU) == 0xFFFEU) return kReplacement;
  return "";
}

}  // namespace

std::string xmlText(std::string_view text) {
  std::string xml;
  xml.reserve(text.size());
  for (std::size_t index = 0; index < text.size();) {
    const Utf8Character character = utf8At(text, index);
    const std::string_view replacement = replacementFor(character);
    xml += replacement.empty() ? text.substr(index, character.length) : replacement;
    index += character.length;
  }
  return xml;
}

std::string pixels(double number) {
  if (!std::isfinite(number)) return "0";
  std::array<char, 400> text{};
  const int length = std::snprintf(text.data(), text.size(), "%.2f", number);
  std::string result(text.data(), static_cast<std::size_t>(length));
  result.erase(result.find_last_not_of('0') + 1);
  if (result.back() == '.') result.pop_back();
  return result == "-0" ? "0" : result;
}

void SvgWriter::start(std::string_view name, const Attributes& attributes) {
  text_ += '<';
  text_ += name;
  for (const Attribute& attribute : attributes) {
    if (attribute.second.empty()) continue;
    text_ += ' ';
    text_ += attribute.first;
    text_ += "=\"";
    text_ += xmlText(attribute.second);
    text_ += '"';
  }
}

void SvgWriter::open(std::string_view name, const Attributes& attributes) {
  start(name, attributes);
  text_ += ">\n";
  open_.emplace_back(name);
}

void SvgWriter::close() {
  if (open_.empty()) std::abort();
  text_ += "</" + open_.back() + ">\n";
  open_.pop_back();
}

void SvgWriter::element(std::string_view name, const Attributes& attributes) {
  start(name, attributes);
  text_ += "/>\n";
}

void SvgWriter::textElement(std::string_view name, const Attributes& attributes,
                            std::string_view text) {
  start(name, attributes);
  text_ += '>' + xmlText(text) + "</";
  text_ += name;
  text_ += ">\n";
}

void SvgWriter::raw(std::string_view xml) { text_ += xml; }

std::string SvgWriter::take() {
  if (!open_.empty()) std::abort();
  return std::exchange(text_, {});
}

}  // namespace KorvaniTools
