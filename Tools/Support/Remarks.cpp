#include "Support/Remarks.hpp"

#include <algorithm>

#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

/// "a, b and 3 more", of those from `first` on.
std::string listed(const std::vector<std::string>& sources, std::size_t first, std::size_t named) {
  const std::size_t last = std::min(sources.size(), named);
  std::string text;
  for (std::size_t i = first; i < last; ++i) text += (i == first ? "" : ", ") + sources[i];
  if (last == sources.size()) return text;
  return text + (last > first ? " and " : "") + std::to_string(sources.size() - last) + " more";
}

}  // namespace

void Remarks::add(Form form, const std::string& one, const std::string& many,
                  const std::string& source) {
  auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& each) {
    return each.form == form && each.one == one;
  });
  if (entry == entries_.end()) entry = entries_.insert(entry, Entry{form, one, many, {}, {}});
  if (entry->known.insert(source).second) entry->sources.push_back(source);
}

void Remarks::add(const Kind& kind, const std::string& source) {
  add(Form::counted, kind.one, kind.many, source);
}

void Remarks::note(const std::string& what, const std::string& example) {
  add(Form::noted, what, "", example);
}

void Remarks::addSentence(const std::string& sentence) {
  const std::size_t blank = std::min(sentence.find(' '), sentence.size());
  const std::size_t bracket =
      sentence.empty() || sentence.back() != ')' ? std::string::npos : sentence.rfind(" (");
  const std::size_t end = std::max(blank, std::min(bracket, sentence.size()));
  add(Form::told, sentence.substr(blank, end - blank), "",
      sentence.substr(0, blank) + sentence.substr(end));
}

std::string Remarks::sentenceOf(const Entry& entry, std::size_t named) {
  const std::size_t count = entry.sources.size();
  switch (entry.form) {
    case Form::counted:
      return counted(count, entry.one, entry.many) + ": " + listed(entry.sources, 0, named);
    case Form::noted:
      return entry.one + ": " + listed(entry.sources, 0, named);
    case Form::told:
      break;
  }
  const std::string& first = entry.sources.front();
  const std::size_t name = std::min(first.find(" ("), first.size());
  const std::string sentence = first.substr(0, name) + entry.one + first.substr(name);
  return count == 1 ? sentence : sentence + "; so with " + listed(entry.sources, 1, named);
}

std::vector<std::string> Remarks::sentences(std::size_t named) const {
  std::vector<std::string> sentences;
  for (const Entry& entry : entries_) sentences.push_back(sentenceOf(entry, named));
  return sentences;
}

}  // namespace KorvaniTools
