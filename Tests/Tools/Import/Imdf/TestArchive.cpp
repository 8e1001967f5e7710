#include "Tools/Import/Imdf/TestArchive.hpp"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace KorvaniTest {
namespace {

constexpr double kMetresPerLatitude = 111200;
constexpr double kMetresPerLongitude = 74400;  // at 48 degrees north

struct Box {
  Metres southWest{1e9, 1e9};
  Metres northEast{-1e9, -1e9};

  void include(double x, double y) {
    southWest = {std::min(southWest.x, x), std::min(southWest.y, y)};
    northEast = {std::max(northEast.x, x + 1), std::max(northEast.y, y + 1)};
  }
};

}  // namespace

Json positionOf(Metres at) {
  return {11 + at.x / kMetresPerLongitude, 48 + at.y / kMetresPerLatitude};
}

Json pointOf(Metres at) { return {{"type", "Point"}, {"coordinates", positionOf(at)}}; }

Json lineOf(const std::vector<Metres>& positions) {
  Json coordinates = Json::array();
  for (const Metres& at : positions) coordinates.push_back(positionOf(at));
  return {{"type", "LineString"}, {"coordinates", coordinates}};
}

Json boxOf(Metres southWest, Metres northEast) {
  const Metres southEast = {northEast.x, southWest.y};
  const Metres northWest = {southWest.x, northEast.y};
  Json ring = Json::array();
  for (const Metres& at : {southWest, southEast, northEast, northWest, southWest}) {
    ring.push_back(positionOf(at));
  }
  return {{"type", "Polygon"}, {"coordinates", Json::array({ring})}};
}

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "korvani-imdf-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void TemporaryFolder::write(const std::string& name, const std::string& text) const {
  const std::filesystem::path path = path_ / name;
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

void TestArchive::floor(int ordinal, const std::vector<std::string>& rows,
                        const std::map<char, std::string>& categories) {
  Box whole;
  std::map<char, Box> boxes;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      const char letter = rows[row][column];
      if (letter == ' ') continue;
      const auto x = static_cast<double>(column);
      const auto y = static_cast<double>(rows.size() - 1 - row);
      boxes[letter].include(x, y);
      whole.include(x, y);
    }
  }
  const std::string number = std::to_string(ordinal);
  const std::string level = "level" + number;
  add("level", level, boxOf(whole.southWest, whole.northEast),
      {{"ordinal", ordinal}, {"outdoor", false}});
  for (const auto& [letter, box] : boxes) {
    add("unit", letter + number, boxOf(box.southWest, box.northEast),
        {{"category", categories.at(letter)}, {"level_id", level}});
  }
}

Json& TestArchive::add(const std::string& kind, const std::string& id, Json geometry,
                       Json properties) {
  features_[kind].push_back({{"type", "Feature"},
                             {"id", id},
                             {"feature_type", kind},
                             {"geometry", std::move(geometry)},
                             {"properties", std::move(properties)}});
  return features_[kind].back();
}

Json& TestArchive::opening(const std::string& id, int ordinal, Metres from, Metres to,
                           const Json& properties) {
  Json all = {{"category", "pedestrian"}, {"level_id", "level" + std::to_string(ordinal)}};
  all.update(properties);
  return add("opening", id, lineOf({from, to}), all);
}

Json& TestArchive::feature(const std::string& kind, const std::string& id) {
  std::vector<Json>& all = features_.at(kind);
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Json& feature) { return feature["id"] == id; });
  if (found == all.end()) throw std::runtime_error("no " + kind + " " + id);
  return *found;
}

Json& TestArchive::properties(const std::string& kind, const std::string& id) {
  return feature(kind, id)["properties"];
}

std::map<std::string, std::string> TestArchive::files() const {
  std::map<std::string, std::string> files;
  for (const auto& [kind, features] : features_) {
    const Json collection = {{"type", "FeatureCollection"}, {"features", features}};
    files[kind + ".geojson"] = collection.dump();
  }
  for (const auto& [name, text] : texts_) files[name] = text;
  return files;
}

FloorPlan TestArchive::read(const ImdfOptions& options) const {
  const TemporaryFolder folder;
  for (const auto& [name, text] : files()) folder.write(name, text);
  return KorvaniTools::readImdf(folder.path(), options);
}

std::string TestArchive::errorOfReading() const {
  try {
    read();
  } catch (const KorvaniTools::BuildingError& error) {
    return error.what();
  } catch (const KorvaniTools::InputError& error) {
    return error.what();
  }
  return "";
}

TestArchive smallArchive() {
  TestArchive archive;
  archive.floor(0,
                {"OOOHHHH",  //
                 "OOOHHHH"},
                {{'O', "office"}, {'H', "lobby"}});
  archive.opening("door", 0, {3, 0.5}, {3, 1.5});
  return archive;
}

const KorvaniTools::PlanCell& cellOf(const FloorPlan& plan, const std::string& source) {
  for (const auto& cell : plan.cells) {
    if (cell.source == source) return cell;
  }
  throw std::runtime_error("no cell " + source);
}

const KorvaniTools::PlanDoor& doorOf(const FloorPlan& plan, const std::string& source) {
  for (const auto& door : plan.doors) {
    if (door.source == source) return door;
  }
  throw std::runtime_error("no door " + source);
}

std::string remarkWith(const FloorPlan& plan, const std::string& part) {
  std::string found;
  for (const std::string& remark : plan.remarks.sentences()) {
    if (remark.find(part) == std::string::npos) continue;
    if (!found.empty()) return "";
    found = remark;
  }
  return found;
}

}  // namespace KorvaniTest
