#include "Platform/Value.hpp"

#include <algorithm>

#include "Platform/FatalError.hpp"

namespace KorvaniPlatform {

Value::Value(Number number) : content_(number) {}

Value::Value(Dictionary dictionary) : content_(std::move(dictionary)) {}

Value::Value(const char* string) : content_(std::string(string)) {}

bool operator==(const Value& a, const Value& b) { return a.content_ == b.content_; }

Dictionary::Dictionary() = default;
Dictionary::Dictionary(const Dictionary& other) = default;
Dictionary::Dictionary(Dictionary&& other) noexcept = default;
Dictionary& Dictionary::operator=(const Dictionary& other) = default;
Dictionary& Dictionary::operator=(Dictionary&& other) noexcept = default;
Dictionary::~Dictionary() = default;

Dictionary::Dictionary(std::initializer_list<Entry> entries) {
  for (const Entry& entry : entries) set(entry.first, entry.second);
}

void Dictionary::set(std::string key, Value value) {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.first == key; });
  if (found == entries_.end()) {
    entries_.emplace_back(std::move(key), std::move(value));
  } else {
    found->second = std::move(value);
  }
}

const Value* Dictionary::find(std::string_view key) const {
  const auto found =
      std::find_if(begin(), end(), [&](const Entry& entry) { return entry.first == key; });
  return found == end() ? nullptr : &found->second;
}

const Value& Dictionary::at(std::string_view key) const {
  const Value* value = find(key);
  if (value == nullptr)
    KORVANI_FATAL("Dictionary::at: no value for key \"" + std::string(key) + "\"");
  return *value;
}

bool Dictionary::contains(std::string_view key) const { return find(key) != nullptr; }

std::size_t Dictionary::size() const { return entries_.size(); }

bool Dictionary::empty() const { return entries_.empty(); }

Dictionary::const_iterator Dictionary::begin() const { return entries_.data(); }

Dictionary::const_iterator Dictionary::end() const { return entries_.data() + entries_.size(); }

bool operator==(const Dictionary& a, const Dictionary& b) { return a.entries_ == b.entries_; }

}  // namespace KorvaniPlatform
