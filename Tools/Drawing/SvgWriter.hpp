#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Drawing/SceneFrame.hpp"

namespace KorvaniTools {

/// `text` as the contents of an XML element or attribute: markup is escaped, what is not UTF-8
/// or not allowed in XML is replaced by U+FFFD, and control characters become blanks.
std::string xmlText(std::string_view text);

/// A length in pixels with at most two decimals: "12.5"; 0 for what is not finite.
std::string pixels(double number);

/// Writes XML, element by element, and closes what was opened.
///
///     SvgWriter svg;
///     svg.open("g", {{"class", "level"}});
///     svg.element("circle", {{"r", "3"}});
///     svg.textElement("title", {}, "Gate B4");
///     svg.close();
///     return svg.take();
///
/// Attributes with an empty value are left out.
class SvgWriter {
 public:
  using Attribute = std::pair<std::string_view, std::string>;
  using Attributes = std::vector<Attribute>;

  void open(std::string_view name, const Attributes& attributes = {});
  /// Closes the element that was opened last.
  void close();
  /// An element without contents.
  void element(std::string_view name, const Attributes& attributes);
  /// An element that holds `text` alone.
  void textElement(std::string_view name, const Attributes& attributes, std::string_view text);
  /// Well-formed XML as it is.
  void raw(std::string_view xml);

  /// What was written; every element must be closed.
  std::string take();

 private:
  void start(std::string_view name, const Attributes& attributes);

  std::string text_;
  std::vector<std::string> open_;
};

}  // namespace KorvaniTools
