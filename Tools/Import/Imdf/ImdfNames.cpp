#include "Import/Imdf/ImdfNames.hpp"

#include <algorithm>
#include <utility>

namespace KorvaniTools {
namespace {

std::string trimmed(const std::string& text) {
  constexpr auto kBlanks = " \t\r\n";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string::npos) return "";
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

/// Whether `text` is more than blanks and punctuation; bytes above 127 belong to letters.
bool saysSomething(const std::string& text) {
  return std::any_of(text.begin(), text.end(), [](unsigned char byte) {
    return byte > 127 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z');
  });
}

std::string lowered(std::string text) {
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return text;
}

/// "de" of "de-CH".
std::string familyOf(const std::string& language) {
  return lowered(language.substr(0, language.find_first_of("-_")));
}

using Names = std::map<std::string, std::string>;

Names namesIn(const Json& value) {
  Names names;
  for (const auto& [language, name] : value.items()) {
    if (!name.is_string()) continue;
    std::string text = trimmed(name.get<std::string>());
    if (saysSomething(text)) names.emplace(language, std::move(text));
  }
  return names;
}

Names::const_iterator nameIn(const Names& names, const std::string& language) {
  const auto exact = std::find_if(names.begin(), names.end(), [&](const auto& entry) {
    return lowered(entry.first) == lowered(language);
  });
  if (exact != names.end()) return exact;
  return std::find_if(names.begin(), names.end(), [&](const auto& entry) {
    return familyOf(entry.first) == familyOf(language);
  });
}

}  // namespace

ImdfLanguages::ImdfLanguages(std::string wanted, std::string archive)
    : wanted_(std::move(wanted)), archive_(std::move(archive)) {}

std::optional<ImdfLabel> ImdfLanguages::label(const Json& value) const {
  if (value.is_string()) {
    const std::string text = trimmed(value.get<std::string>());
    return saysSomething(text) ? std::optional(ImdfLabel{text, {}}) : std::nullopt;
  }
  if (!value.is_object()) return {};
  const Names names = namesIn(value);
  if (names.empty()) return {};
  auto chosen = nameIn(names, wanted_);
  if (chosen == names.end()) chosen = nameIn(names, archive_);
  if (chosen == names.end()) chosen = names.begin();
  ImdfLabel label{chosen->second, {}};
  for (const auto& [language, name] : names) {
    if (name != label.text) label.others.emplace(language, name);
  }
  return label;
}

bool isLabel(const Json& value) {
  if (value.is_string()) return true;
  return value.is_object() && std::all_of(value.begin(), value.end(), [](const Json& name) {
           return name.is_string() || name.is_null();
         });
}

}  // namespace KorvaniTools
