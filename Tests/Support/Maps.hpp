#pragma once

/// The maps of real buildings. They are no part of the repository: the CMake variable
/// KORVANI_MAPS_DIR names their folder, and tests that need them are skipped without it.
///
///     TEST(Reader, ReadsTheCongressCentre) {
///       SKIP_WITHOUT_MAPS();
///       const auto building = readBuilding(mapFile("cch-32c3-graph/cch.building.geojson"));
///
/// A folder in which one of the maps is missing is no reason to skip: reading it fails then.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace KorvaniTest {

/// The path of a file or folder among the maps.
inline std::filesystem::path mapFile(const std::string& name) {
  return std::filesystem::path(KORVANI_MAPS_DIR) / name;
}

/// Whether the maps' folder is there.
inline bool hasMaps() { return std::filesystem::is_directory(KORVANI_MAPS_DIR); }

}  // namespace KorvaniTest

/// Ends a test, or its SetUp, as skipped when the maps are not there.
#define SKIP_WITHOUT_MAPS()                                                                  \
  if (!KorvaniTest::hasMaps())                                                               \
  GTEST_SKIP() << "no maps of real buildings at " << std::filesystem::path(KORVANI_MAPS_DIR) \
               << "; set KORVANI_MAPS_DIR to their folder"
