#pragma once

/// Zip files for tests, also such as nobody should make.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace KorvaniTest {

struct ZipEntry {
  std::string name;
  std::string text;
  std::string password = {};  ///< encrypted with it, unless empty
  bool symbolicLink = false;  ///< to `text`
  bool stored = false;        ///< not compressed
};

/// Writes the entries into a zip file; names that end in / are folders.
void writeZip(const std::filesystem::path& path, const std::vector<ZipEntry>& entries);

/// Replaces each occurrence of `from` in a file's bytes with `to`, which is as long.
void patchFile(const std::filesystem::path& path, const std::string& from, const std::string& to);

/// Has the zip file's headers claim that each entry unfolds to so many bytes.
void claimSizes(const std::filesystem::path& path, std::uint32_t bytes);

std::string bytesOf(const std::filesystem::path& path);
void writeBytes(const std::filesystem::path& path, const std::string& bytes);

}  // namespace KorvaniTest
