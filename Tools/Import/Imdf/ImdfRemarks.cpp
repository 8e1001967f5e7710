#include "Import/Imdf/ImdfRemarks.hpp"

namespace KorvaniTools {
namespace {

constexpr std::size_t kExamples = 3;

}  // namespace

void ImdfRemarks::note(const std::string& what, const std::string& example) {
  const auto [position, isNew] = indexes_.emplace(what, entries_.size());
  if (isNew) entries_.push_back({what, 0, {}});
  Entry& entry = entries_[position->second];
  ++entry.count;
  if (entry.examples.size() < kExamples) entry.examples.push_back(example);
}

std::vector<std::string> ImdfRemarks::sentences() const {
  std::vector<std::string> sentences;
  for (const Entry& entry : entries_) {
    std::string text = entry.what + ": ";
    for (std::size_t i = 0; i < entry.examples.size(); ++i) {
      text += (i == 0 ? "" : ", ") + entry.examples[i];
    }
    const std::size_t further = entry.count - entry.examples.size();
    if (further > 0) text += " and " + std::to_string(further) + " more";
    sentences.push_back(text);
  }
  return sentences;
}

}  // namespace KorvaniTools
