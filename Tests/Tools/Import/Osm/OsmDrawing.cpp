#include "Tools/Import/Osm/OsmDrawing.hpp"

#include <unistd.h>

#include <fstream>
#include <osmium/io/any_input.hpp>
#include <osmium/io/any_output.hpp>
#include <sstream>

#include "Import/Osm/OsmReader.hpp"

namespace KorvaniTest {
namespace {

constexpr double kSouth = 48;
constexpr double kWest = 11;
constexpr double kRow = 0.00004;
constexpr double kColumn = 0.00003;

std::string escaped(const std::string& text) {
  std::string result;
  for (const char letter : text) {
    switch (letter) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += letter;
    }
  }
  return result;
}

std::string tagsText(const TagList& tags) {
  std::string text;
  for (const auto& [key, value] : tags) {
    text += "<tag k=\"" + escaped(key) + "\" v=\"" + escaped(value) + "\"/>";
  }
  return text;
}

bool isLetter(char letter) {
  return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

std::string idOf(char letter) { return std::to_string(static_cast<int>(letter)); }

}  // namespace

OsmDrawing::OsmDrawing(const std::vector<std::string>& rows) {
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      const char letter = rows[row][column];
      if (!isLetter(letter)) continue;
      nodes_[letter] = {kSouth + kRow * static_cast<double>(rows.size() - row),
                        kWest + kColumn * static_cast<double>(column)};
    }
  }
}

void OsmDrawing::place(char letter, double north, double east) {
  nodes_[letter] = {kSouth + north, kWest + east};
}

void OsmDrawing::node(char letter, const TagList& tags) { nodeTags_[letter] = tags; }

std::int64_t OsmDrawing::way(const std::string& letters, const TagList& tags) {
  ways_.emplace_back(letters, tags);
  return static_cast<std::int64_t>(ways_.size());
}

void OsmDrawing::relation(const std::vector<std::pair<std::int64_t, std::string>>& members,
                          TagList tags) {
  std::string text;
  for (const auto& [way, role] : members) {
    text += "<member type=\"way\" ref=\"" + std::to_string(way) + "\" role=\"" + role + "\"/>";
  }
  tags.emplace_back("type", "multipolygon");
  relations_.push_back(text + tagsText(tags));
}

std::string OsmDrawing::xml() const {
  std::ostringstream text;
  text.precision(10);
  text << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<osm version=\"0.6\">\n";
  for (const auto& [letter, at] : nodes_) {
    const auto tags = nodeTags_.find(letter);
    text << "<node id=\"" << idOf(letter) << "\" lat=\"" << at.latitude << "\" lon=\""
         << at.longitude << "\">" << (tags == nodeTags_.end() ? "" : tagsText(tags->second))
         << "</node>\n";
  }
  for (std::size_t i = 0; i < ways_.size(); ++i) {
    text << "<way id=\"" << i + 1 << "\">";
    for (const char letter : ways_[i].first) text << "<nd ref=\"" << idOf(letter) << "\"/>";
    text << tagsText(ways_[i].second) << "</way>\n";
  }
  for (std::size_t i = 0; i < relations_.size(); ++i) {
    text << "<relation id=\"" << i + 1 << "\">" << relations_[i] << "</relation>\n";
  }
  text << "</osm>\n";
  return text.str();
}

OsmFile::OsmFile(const std::string& contents, const std::string& suffix) {
  static int number = 0;
  path_ = std::filesystem::temp_directory_path() /
          ("korvani-osm-" + std::to_string(getpid()) + '-' + std::to_string(number++) + suffix);
  std::ofstream(path_, std::ios::binary) << contents;
}

OsmFile::~OsmFile() {
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

std::string OsmFile::contents() const {
  std::ostringstream text;
  text << std::ifstream(path_, std::ios::binary).rdbuf();
  return text.str();
}

std::string converted(const std::string& xml, const std::string& suffix) {
  const OsmFile source(xml);
  const OsmFile target("", suffix);
  osmium::io::Reader reader(source.path().string());
  osmium::io::Writer writer(target.path().string(), osmium::io::overwrite::allow);
  while (osmium::memory::Buffer buffer = reader.read()) writer(std::move(buffer));
  writer.close();
  reader.close();
  return target.contents();
}

KorvaniTools::FloorPlan planOf(const OsmDrawing& map) {
  const OsmFile file(map.xml());
  return KorvaniTools::readOsm(file.path(), {});
}

}  // namespace KorvaniTest
