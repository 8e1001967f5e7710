#pragma once

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "Platform/Export.hpp"
#include "Platform/Number.hpp"

/// Values without a class of their own: what configuration actions return, what the directions'
/// dictionary holds, and what notifications carry.
///
/// A `Value` is a number, a string or a dictionary; a `Dictionary` is a list of keyed values that
/// keeps the order in which keys were added, so that the same steps give the same output:
///
///     Dictionary info{{"latitude", 48.1372}, {"level", 2}, {"name", "Hall"}};
///     info.set("indoor", true);
///     if (const Value* level = info.find("level")) use(level->number()->integerValue());
///     for (const auto& [key, value] : info) ...
///
/// Text forms (JSON and the like) belong to who writes them.
///
/// Thread safety: values; reading one from several threads is safe.

namespace KorvaniPlatform {

class Value;

/// The string types whose text a `Value` takes.
template <class T>
concept StringText = std::same_as<std::remove_cvref_t<T>, std::string> ||
    std::same_as<std::remove_cvref_t<T>, std::string_view>;

/// The built-in types that a `Number` boxes.
template <class T>
concept BoxableNumber = std::integral<T> || std::same_as<T, float> || std::same_as<T, double>;

/// Keyed values in the order of their keys' first addition. Lookups go through the list: the
/// dictionaries of the engine have a handful of keys.
class KORVANI_API Dictionary {
 public:
  using Entry = std::pair<std::string, Value>;
  using const_iterator = const Entry*;

  Dictionary();
  /// The entries in order; a key that comes twice keeps its first place and its last value.
  Dictionary(std::initializer_list<Entry> entries);
  Dictionary(const Dictionary& other);
  Dictionary(Dictionary&& other) noexcept;
  Dictionary& operator=(const Dictionary& other);
  Dictionary& operator=(Dictionary&& other) noexcept;
  ~Dictionary();

  /// Adds the value at the end, or replaces the key's value in its place.
  void set(std::string key, Value value);

  /// The key's value, or null when there is none. Valid until the dictionary is changed.
  const Value* find(std::string_view key) const;

  /// The key's value, which must exist: a missing key is a fatal error that names it.
  const Value& at(std::string_view key) const;

  bool contains(std::string_view key) const;
  std::size_t size() const;
  bool empty() const;

  /// The entries in order, as pairs of key and value.
  const_iterator begin() const;
  const_iterator end() const;

  /// Equal when the same entries come in the same order.
  friend KORVANI_API bool operator==(const Dictionary& a, const Dictionary& b);

 private:
  std::vector<Entry> entries_;
};

/// A number, a string or a dictionary.
class KORVANI_API Value {
 public:
  /// Conversions, one a kind. Those for numbers and strings are templates constrained on the type,
  /// so that nothing else (a pointer, a list in braces) turns into one by accident.
  // NOLINTBEGIN(google-explicit-constructor): the conversions are wanted.
  Value(Number number);
  Value(Dictionary dictionary);
  Value(const char* string);
  template <StringText T>
  Value(T&& string) : content_(std::string(std::forward<T>(string))) {}
  template <BoxableNumber T>
  Value(T number) : content_(Number(number)) {}
  // NOLINTEND(google-explicit-constructor)

  bool isNumber() const { return number() != nullptr; }
  bool isString() const { return string() != nullptr; }
  bool isDictionary() const { return dictionary() != nullptr; }

  /// The content when it is of that kind, otherwise null. Valid while the value is unchanged.
  const Number* number() const { return std::get_if<Number>(&content_); }
  const std::string* string() const { return std::get_if<std::string>(&content_); }
  const Dictionary* dictionary() const { return std::get_if<Dictionary>(&content_); }

  /// Equal when kind and content are.
  friend KORVANI_API bool operator==(const Value& a, const Value& b);

 private:
  std::variant<Number, std::string, Dictionary> content_;
};

}  // namespace KorvaniPlatform
