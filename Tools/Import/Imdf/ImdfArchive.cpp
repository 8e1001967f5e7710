#include "Import/Imdf/ImdfArchive.hpp"

#include <algorithm>
#include <system_error>

#include "Building/JsonText.hpp"
#include "Import/Imdf/FolderArchive.hpp"
#include "Import/Imdf/ZipArchive.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

/// The folder of `path` with a slash at its end, when `path` is a level file in one folder.
std::optional<std::string> topFolderOf(const std::string& path) {
  const std::size_t slash = path.find('/');
  if (slash == std::string::npos || path.substr(slash + 1) != kLevelFile) return {};
  return path.substr(0, slash + 1);
}

}  // namespace

std::string folderOfLevels(const std::vector<std::string>& paths, const std::string& archive) {
  if (std::find(paths.begin(), paths.end(), kLevelFile) != paths.end()) return "";
  std::vector<std::string> folders;
  for (const std::string& path : paths) {
    if (const auto folder = topFolderOf(path)) folders.push_back(*folder);
  }
  if (folders.size() == 1) return folders.front();
  if (folders.empty()) {
    throw InputError(archive +
                     ": found no level.geojson, expected one at the top of the archive or in one "
                     "folder there");
  }
  throw InputError(archive + ": found archives in " + inQuotes(folders[0]) + " and " +
                   inQuotes(folders[1]) + ", expected one");
}

std::unique_ptr<ImdfArchive> openImdfArchive(const std::filesystem::path& path,
                                             const ArchiveLimits& limits) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    return std::make_unique<FolderArchive>(path, limits);
  }
  return std::make_unique<ZipArchive>(path, limits);
}

}  // namespace KorvaniTools
