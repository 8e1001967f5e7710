#pragma once

/// A folder for a test's files.
///
///     const TemporaryFolder folder;
///     write(folder.path() / "a.txt");
///     EXPECT_EQ(textOf(folder.path() / "a.txt"), "a\n");

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace KorvaniTest {

/// Empty at first, and gone with the object.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device chance;
    path_ = std::filesystem::path(testing::TempDir()) /
            ("korvani-recorder-" + std::to_string(chance()) + std::to_string(chance()));
    std::filesystem::create_directories(path_);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// The contents of a file; empty when there is none.
inline std::string textOf(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

/// The lines of a file, without their line feeds.
inline std::vector<std::string> linesOf(const std::filesystem::path& file) {
  std::vector<std::string> lines;
  std::istringstream text(textOf(file));
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

}  // namespace KorvaniTest
