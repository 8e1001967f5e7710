#include "Import/Osm/OsmStream.hpp"

#include <algorithm>
#include <array>
#include <exception>
#include <memory>
#include <osmium/io/any_input.hpp>
#include <osmium/osm.hpp>
#include <osmium/util/progress_bar.hpp>
#include <stdexcept>
#include <system_error>

#include "Support/InputError.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

namespace fs = std::filesystem;

struct Format {
  const char* suffix;
  const char* name;      ///< as the library calls it
  const char* expected;  ///< for people
};
constexpr std::array<Format, 4> kFormats{{{".osm", "osm", "OSM XML"},
                                          {".osm.gz", "osm.gz", "OSM XML packed by gzip"},
                                          {".osm.bz2", "osm.bz2", "OSM XML packed by bzip2"},
                                          {".pbf", "pbf", "OSM PBF"}}};

const Format* formatOf(const std::string& name) {
  const std::string folded = foldedCase(name);
  for (const Format& format : kFormats) {
    const std::string suffix = format.suffix;
    if (folded.size() > suffix.size() &&
        folded.compare(folded.size() - suffix.size(), suffix.size(), suffix) == 0) {
      return &format;
    }
  }
  return nullptr;
}

/// The library's words without what it says about itself.
std::string withoutPrefix(const std::string& text, const std::string& prefix) {
  return text.compare(0, prefix.size(), prefix) == 0 ? text.substr(prefix.size()) : text;
}

template <class Object>
constexpr osmium::osm_entity_bits::type kBits = osmium::osm_entity_bits::nothing;
template <>
constexpr osmium::osm_entity_bits::type kBits<osmium::Node> = osmium::osm_entity_bits::node;
template <>
constexpr osmium::osm_entity_bits::type kBits<osmium::Way> = osmium::osm_entity_bits::way;
template <>
constexpr osmium::osm_entity_bits::type kBits<osmium::Relation> = osmium::osm_entity_bits::relation;

}  // namespace

OsmStream::OsmStream(const fs::path& file, bool progress, std::size_t passes)
    : name_(file.string()) {
  std::error_code fault;
  const auto status = fs::status(file, fault);
  if (!fs::exists(status)) throw InputError("cannot read " + name_ + ": there is no such file");
  if (!fs::is_regular_file(status)) {
    throw InputError("cannot read " + name_ + ": it is no ordinary file");
  }
  const Format* const format = formatOf(name_);
  if (format == nullptr) {
    throw InputError(name_ +
                     ": found a name of another kind, expected one that ends in .osm, "
                     ".osm.gz, .osm.bz2 or .osm.pbf");
  }
  format_ = format->name;
  // The library takes names that begin like a network address for one.
  path_ = fs::absolute(file).string();
  size_ = static_cast<std::size_t>(fs::file_size(file, fault));
  bar_ = std::make_unique<osmium::ProgressBar>(size_ * passes, progress);
}

OsmStream::~OsmStream() {
  if (std::uncaught_exceptions() == 0) return;
  // Else it would end by showing that all is done.
  bar_->remove();
  *bar_ = osmium::ProgressBar(0, false);
}

void OsmStream::fail(const std::string& found, std::size_t offset) {
  const Format* const format = formatOf(name_);
  std::string place;
  if (found.find(" at line ") == std::string::npos && size_ > 0) {
    place = "near byte " + std::to_string(offset) + " of " + std::to_string(size_) + ": ";
  }
  throw InputError(name_ + ": " + place + "found " + withoutPrefix(found, "PBF error: ") +
                   ", expected " + format->expected);
}

template <class Object>
void OsmStream::pass(const std::function<void(const Object&)>& visit) {
  std::size_t offset = 0;
  std::string problem;
  try {
    osmium::io::Reader reader(osmium::io::File(path_, format_), kBits<Object>,
                              osmium::io::read_meta::no);
    while (const osmium::memory::Buffer buffer = reader.read()) {
      offset = reader.offset();
      bar_->update(offset);
      for (const Object& object : buffer.select<Object>()) {
        if (object.visible()) visit(object);
      }
    }
    offset = size_;
    reader.close();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    problem = error.what();
  }
  if (!problem.empty()) fail(problem, offset);
  bar_->file_done(size_);
}

void OsmStream::nodes(const std::function<void(const osmium::Node&)>& visit) { pass(visit); }

void OsmStream::ways(const std::function<void(const osmium::Way&)>& visit) { pass(visit); }

void OsmStream::relations(const std::function<void(const osmium::Relation&)>& visit) {
  pass(visit);
}

TagReader::TagReader(const osmium::TagList& tags) {
  if (tags.empty()) return;
  const char* const first = tags.begin()->key();
  const auto* const end = reinterpret_cast<const char*>(tags.data() + tags.byte_size());
  rest_ = std::string_view(first, static_cast<std::size_t>(end - first));
}

std::string_view TagReader::takeText() {
  const std::size_t end = rest_.find('\0');
  if (end == std::string_view::npos) throw std::runtime_error("a tag with a zero byte");
  const std::string_view text = rest_.substr(0, end);
  rest_.remove_prefix(end + 1);
  return text;
}

bool TagReader::next() {
  if (rest_.empty()) return false;
  key_ = takeText();
  value_ = takeText();
  return true;
}

OsmTags tagsOf(const osmium::TagList& tags) {
  OsmTags result;
  for (TagReader tag(tags); tag.next();) result.add(tag.key(), tag.value());
  return result;
}

std::string_view tagOf(const osmium::TagList& tags, std::string_view key) {
  for (TagReader tag(tags); tag.next();) {
    if (tag.key() == key) return tag.value();
  }
  return {};
}

bool hasAnyOf(const osmium::TagList& tags, std::initializer_list<std::string_view> keys) {
  for (TagReader tag(tags); tag.next();) {
    if (std::find(keys.begin(), keys.end(), tag.key()) != keys.end()) return true;
  }
  return false;
}

}  // namespace KorvaniTools
