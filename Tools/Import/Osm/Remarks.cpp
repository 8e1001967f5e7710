#include "Import/Osm/Remarks.hpp"

#include <algorithm>
#include <string_view>

#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

constexpr std::size_t kNamed = 5;

}  // namespace

void Remarks::add(const Kind& kind, const std::string& source) {
  auto entry = std::find_if(entries_.begin(), entries_.end(), [&kind](const Entry& each) {
    return std::string_view(each.kind.one) == kind.one;
  });
  if (entry == entries_.end()) entry = entries_.insert(entry, Entry{kind, {}, {}});
  if (!entry->sources.insert(source).second) return;
  if (entry->named.size() < kNamed) entry->named.push_back(source);
}

std::vector<std::string> Remarks::sentences() const {
  std::vector<std::string> sentences;
  for (const Entry& entry : entries_) {
    const std::size_t count = entry.sources.size();
    std::string text = counted(count, entry.kind.one, entry.kind.many);
    const char* separator = ": ";
    for (const std::string& source : entry.named) {
      text += separator + source;
      separator = ", ";
    }
    sentences.push_back(count > entry.named.size() ? text + ", ..." : text);
  }
  return sentences;
}

}  // namespace KorvaniTools
