#pragma once

/// OpenStreetMap files for tests, drawn as text.

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Building/Rectangle.hpp"
#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTest {

using TagList = std::vector<std::pair<std::string, std::string>>;

/// A map whose nodes are the letters of a drawing. Columns are about 2 m apart, rows about 4 m.
///
///     OsmDrawing map({"a----b",
///                     "|    |",
///                     "d-e--c"});
///     map.way("abcdea", {{"indoor", "room"}, {"level", "0"}});   // way/1
///     map.node('e', {{"door", "yes"}});
///
/// The node of 'a' is node/97 and so on, by the letters' codes; ways and relations are numbered
/// from 1 on.
class OsmDrawing {
 public:
  explicit OsmDrawing(const std::vector<std::string>& rows);

  /// Puts a node where the drawing does not reach.
  void place(char letter, double north, double east);

  void node(char letter, const TagList& tags);

  /// Adds a way through those nodes; gives its number. Letters that are not drawn are nodes that
  /// the file lacks.
  std::int64_t way(const std::string& letters, const TagList& tags);

  /// Adds a multipolygon of ways, by numbers and roles.
  void relation(const std::vector<std::pair<std::int64_t, std::string>>& members, TagList tags);

  /// The file as OSM XML.
  std::string xml() const;

  KorvaniTools::Coordinate at(char letter) const { return nodes_.at(letter); }

 private:
  std::map<char, KorvaniTools::Coordinate> nodes_;
  std::map<char, TagList> nodeTags_;
  std::vector<std::pair<std::string, TagList>> ways_;
  std::vector<std::string> relations_;
};

/// A file of this process's own with that ending, removed with the object.
class OsmFile {
 public:
  explicit OsmFile(const std::string& contents, const std::string& suffix = ".osm");
  ~OsmFile();
  OsmFile(const OsmFile&) = delete;
  OsmFile& operator=(const OsmFile&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string contents() const;

 private:
  std::filesystem::path path_;
};

/// The same objects in another format, by its ending: ".osm.gz", ".osm.bz2", ".osm.pbf".
std::string converted(const std::string& xml, const std::string& suffix);

/// What the importer makes of the map.
KorvaniTools::FloorPlan planOf(const OsmDrawing& map);

}  // namespace KorvaniTest
