#pragma once

#include <string>
#include <string_view>

namespace KorvaniTools {

/// How text is made to stand out: with a terminal's codes or not at all.
class Style {
 public:
  /// Plain text.
  Style() = default;

  /// Coloured when `on`.
  explicit Style(bool on) : on_(on) {}

  /// For standard output: coloured when it is a terminal that understands the codes and the
  /// environment variable NO_COLOR is not set to anything.
  static Style forStandardOutput();

  std::string heading(std::string_view text) const { return coloured("1", text); }
  std::string faint(std::string_view text) const { return coloured("2", text); }
  std::string warning(std::string_view text) const { return coloured("33", text); }

 private:
  std::string coloured(const char* code, std::string_view text) const;

  bool on_ = false;
};

}  // namespace KorvaniTools
