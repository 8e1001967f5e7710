#include "Tools/Drawing/XmlTree.hpp"

#include <expat.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <utility>

namespace KorvaniTest {
namespace {

/// Elements that are open; the first stands for the document.
using Open = std::vector<XmlElement>;

void start(void* user, const XML_Char* name, const XML_Char** attributes) {
  XmlElement element;
  element.name = name;
  for (; *attributes != nullptr; attributes += 2) element.attributes[attributes[0]] = attributes[1];
  static_cast<Open*>(user)->push_back(std::move(element));
}

void end(void* user, const XML_Char* /*name*/) {
  Open& open = *static_cast<Open*>(user);
  XmlElement element = std::move(open.back());
  open.pop_back();
  open.back().children.push_back(std::move(element));
}

void text(void* user, const XML_Char* characters, int length) {
  static_cast<Open*>(user)->back().text.append(characters, static_cast<std::size_t>(length));
}

struct FreeParser {
  void operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }
};

}  // namespace

std::string XmlElement::attribute(const std::string& key) const {
  const auto found = attributes.find(key);
  return found == attributes.end() ? "" : found->second;
}

bool XmlElement::hasClass(const std::string& word) const {
  std::istringstream words(attribute("class"));
  for (std::string each; words >> each;) {
    if (each == word) return true;
  }
  return false;
}

std::vector<const XmlElement*> XmlElement::all(
    const std::function<bool(const XmlElement&)>& wanted) const {
  std::vector<const XmlElement*> found;
  if (wanted(*this)) found.push_back(this);
  for (const XmlElement& child : children) {
    for (const XmlElement* each : child.all(wanted)) found.push_back(each);
  }
  return found;
}

std::vector<const XmlElement*> XmlElement::ofClass(const std::string& word) const {
  return all([&](const XmlElement& element) { return element.hasClass(word); });
}

std::vector<const XmlElement*> XmlElement::named(const std::string& elementName) const {
  return all([&](const XmlElement& element) { return element.name == elementName; });
}

XmlElement parsedXml(const std::string& document) {
  const std::unique_ptr<XML_ParserStruct, FreeParser> parser(XML_ParserCreate("UTF-8"));
  Open open(1);
  XML_SetUserData(parser.get(), &open);
  XML_SetElementHandler(parser.get(), start, end);
  XML_SetCharacterDataHandler(parser.get(), text);
  const auto size = static_cast<int>(document.size());
  if (XML_Parse(parser.get(), document.data(), size, XML_TRUE) != XML_STATUS_OK) {
    ADD_FAILURE() << "line " << XML_GetCurrentLineNumber(parser.get()) << ": "
                  << XML_ErrorString(XML_GetErrorCode(parser.get()));
    return {};
  }
  return open.front().children.front();
}

}  // namespace KorvaniTest
