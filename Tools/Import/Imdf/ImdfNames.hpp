#pragma once

/// Internal. Labels: names in several languages, of which one is wanted.

#include <map>
#include <optional>
#include <string>

#include "Building/JsonText.hpp"

namespace KorvaniTools {

/// A name in the wanted language, and what it is in the others.
struct ImdfLabel {
  std::string text;
  std::map<std::string, std::string> others;  ///< by language; only those that differ
};

/// Chooses among languages: the wanted one, one of the same family ("de" for "de-CH", and the
/// other way round), the archive's own, the first.
class ImdfLanguages {
 public:
  ImdfLanguages(std::string wanted, std::string archive);

  /// The label of an IMDF `LABELS` object, or of a plain string; names without a letter or digit
  /// do not count. Absent when `value` has no name in any language.
  std::optional<ImdfLabel> label(const Json& value) const;

 private:
  std::string wanted_;
  std::string archive_;
};

/// Whether `value` is what a label may be.
bool isLabel(const Json& value);

}  // namespace KorvaniTools
