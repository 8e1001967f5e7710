#pragma once

/// Internal. The files of an archive by name, wherever they lie: in a folder or in a zip file.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace KorvaniTools {

/// The file that an archive is recognised by.
inline constexpr const char* kLevelFile = "level.geojson";

/// How much an archive may hold.
struct ArchiveLimits {
  std::uint64_t unfoldedBytes = 512ULL * 1024 * 1024;  ///< of all files that are read together
  std::size_t entries = 10000;                         ///< files and folders of a zip file
};

/// An opened archive. It only reads, and keeps no more in memory than what it hands out.
///
///     const auto archive = openImdfArchive("terminal.zip", ArchiveLimits());
///     if (const auto text = archive->text("level.geojson")) ...
///
/// Its files may lie at the top or together in one folder at the top.
/// Not for use by several threads at once.
class ImdfArchive {
 public:
  virtual ~ImdfArchive() = default;

  /// The contents of the file `name` ("level.geojson"); absent when there is none.
  /// @throws InputError when it cannot be read, is damaged, or makes the archive too large
  virtual std::optional<std::string> text(const std::string& name) = 0;

  /// What messages call the file `name`: "terminal.zip/level.geojson".
  virtual std::string pathOf(const std::string& name) const = 0;
};

/// Opens the folder or the zip file at `path`.
///
/// Refused are zip files with encrypted entries, with entries that lead out of the archive
/// (absolute, with "..", drive letters or backslashes, symbolic links), with a name twice, and
/// with more than `limits` allow, whatever sizes they claim to have. In folders, symbolic links
/// are followed as long as they stay inside.
/// @throws InputError
std::unique_ptr<ImdfArchive> openImdfArchive(const std::filesystem::path& path,
                                             const ArchiveLimits& limits);

/// The folder of an archive that holds its level file, of the paths of all its files: "" for the
/// top, or "name/". Paths have no more than one folder for that; deeper ones are ignored.
/// @throws InputError, which names `archive`, when there is none or more than one
std::string folderOfLevels(const std::vector<std::string>& paths, const std::string& archive);

}  // namespace KorvaniTools
