#pragma once

/// Internal. Passes over an OpenStreetMap file.

#include <cstddef>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <osmium/fwd.hpp>
#include <string>
#include <string_view>

#include "Import/Osm/OsmTags.hpp"

namespace osmium {
class ProgressBar;
class TagList;
}  // namespace osmium

namespace KorvaniTools {

/// Reads a file again and again, each time one kind of objects. Objects that are marked as
/// deleted are left out. Memory does not depend on the file's size.
class OsmStream {
 public:
  /// @param passes how many passes are expected, for the progress bar
  /// @throws InputError when there is no such file, or its name ends in nothing that is known
  OsmStream(const std::filesystem::path& file, bool progress, std::size_t passes);
  ~OsmStream();
  OsmStream(const OsmStream&) = delete;
  OsmStream& operator=(const OsmStream&) = delete;

  /// One pass, in the file's order.
  /// @throws InputError when the file cannot be read or is malformed
  void nodes(const std::function<void(const osmium::Node&)>& visit);
  void ways(const std::function<void(const osmium::Way&)>& visit);
  void relations(const std::function<void(const osmium::Relation&)>& visit);

  /// As it was given.
  const std::string& name() const { return name_; }

 private:
  template <class Object>
  void pass(const std::function<void(const Object&)>& visit);
  [[noreturn]] void fail(const std::string& found, std::size_t offset);

  std::string name_;
  std::string path_;
  std::string format_;
  std::size_t size_ = 0;
  std::unique_ptr<osmium::ProgressBar> bar_;
};

/// Walks through the tags of an object.
///
///     for (TagReader tag(node.tags()); tag.next();) use(tag.key(), tag.value());
///
/// A PBF file may hold zero bytes in its texts, with which the library's own ways to look into tags
/// run off their end. This one throws instead.
class TagReader {
 public:
  explicit TagReader(const osmium::TagList& tags);

  /// Goes to the next tag, at first to the first; false when there is none.
  /// @throws std::runtime_error for a key without a value
  bool next();

  std::string_view key() const { return key_; }
  std::string_view value() const { return value_; }

 private:
  std::string_view takeText();

  std::string_view rest_;
  std::string_view key_;
  std::string_view value_;
};

OsmTags tagsOf(const osmium::TagList& tags);

/// The value of that tag; empty when there is none.
std::string_view tagOf(const osmium::TagList& tags, std::string_view key);

/// Whether there is a tag with one of these keys.
bool hasAnyOf(const osmium::TagList& tags, std::initializer_list<std::string_view> keys);

}  // namespace KorvaniTools
