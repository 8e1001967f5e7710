#pragma once

/// IMDF archives for tests, put together from drawn floors:
///
///     TestArchive archive;
///     archive.floor(0, {"OOOHHHH",
///                       "OOOHHHH"}, {{'O', "office"}, {'H', "lobby"}});
///     archive.opening("door", 0, {3, 0.5}, {3, 1.5});
///     const FloorPlan plan = archive.read();
///
/// Each letter of a floor is a unit: the box around its squares, which are one metre wide. Unit
/// and level have ids like "O0" and "level0". The south-west corner of the drawing is at 0, 0.

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Building/BuildingError.hpp"
#include "Import/Imdf/ImdfReader.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTest {

using KorvaniTools::FloorPlan;
using KorvaniTools::ImdfOptions;
using Json = nlohmann::json;

struct Metres {
  double x = 0;
  double y = 0;
};

/// [longitude, latitude] of a point of the drawings.
Json positionOf(Metres at);
Json pointOf(Metres at);
Json lineOf(const std::vector<Metres>& positions);
Json boxOf(Metres southWest, Metres northEast);

/// A folder of the test's own that is removed with the object.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  /// Writes a file, and the folders that it is in.
  void write(const std::string& name, const std::string& text) const;

 private:
  std::filesystem::path path_;
};

class TestArchive {
 public:
  void floor(int ordinal, const std::vector<std::string>& rows,
             const std::map<char, std::string>& categories);

  /// Adds a feature to the file of that kind.
  Json& add(const std::string& kind, const std::string& id, Json geometry, Json properties);
  Json& opening(const std::string& id, int ordinal, Metres from, Metres to,
                const Json& properties = Json::object());

  /// The properties of the feature of that kind and id.
  Json& properties(const std::string& kind, const std::string& id);
  Json& feature(const std::string& kind, const std::string& id);

  /// Text instead of, or beside, the features' files.
  void file(const std::string& name, const std::string& text) { texts_[name] = text; }

  /// All files by name.
  std::map<std::string, std::string> files() const;

  /// Writes them into a folder and reads it.
  FloorPlan read(const ImdfOptions& options = {}) const;

  /// What the error says that reading gives; empty when there is none.
  std::string errorOfReading() const;

 private:
  std::map<std::string, std::vector<Json>> features_;  ///< by kind
  std::map<std::string, std::string> texts_;
};

/// Two rooms and a door on level 0, which can be read.
TestArchive smallArchive();

const KorvaniTools::PlanCell& cellOf(const FloorPlan& plan, const std::string& source);
const KorvaniTools::PlanDoor& doorOf(const FloorPlan& plan, const std::string& source);

/// The one remark that contains `part`; empty when there is none, or more than one.
std::string remarkWith(const FloorPlan& plan, const std::string& part);

}  // namespace KorvaniTest
