#pragma once

/// Reads XML back, to look at what was written as other programs see it.

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace KorvaniTest {

struct XmlElement {
  std::string name;
  std::map<std::string, std::string> attributes;
  std::string text;  ///< of the element itself, without that of its children
  std::vector<XmlElement> children;

  /// The attribute's value, empty when there is none.
  std::string attribute(const std::string& key) const;

  /// Whether `word` is one of the words of its class.
  bool hasClass(const std::string& word) const;

  /// Itself and all below it that `wanted` says true for, in the order of the text.
  std::vector<const XmlElement*> all(const std::function<bool(const XmlElement&)>& wanted) const;

  /// All with that word in their class.
  std::vector<const XmlElement*> ofClass(const std::string& word) const;
  std::vector<const XmlElement*> named(const std::string& elementName) const;
};

/// The document's root. A fault fails the test and gives an element without a name.
XmlElement parsedXml(const std::string& text);

}  // namespace KorvaniTest
