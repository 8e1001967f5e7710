#include "Import/Imdf/FolderArchive.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <system_error>
#include <vector>

#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

namespace fs = std::filesystem;

/// The level files at the top of `folder` and in the folders in it, in order of their names.
std::vector<std::string> levelFilesIn(const fs::path& folder) {
  std::vector<std::string> paths;
  std::error_code fault;
  if (fs::exists(folder / kLevelFile, fault)) paths.emplace_back(kLevelFile);
  fs::directory_iterator entries(folder, fault);
  for (; !fault && entries != fs::directory_iterator(); entries.increment(fault)) {
    std::error_code ignored;
    if (!fs::exists(entries->path() / kLevelFile, ignored)) continue;
    paths.push_back((entries->path().filename() / kLevelFile).generic_string());
  }
  if (fault) {
    throw InputError(folder.string() + ": found a folder that cannot be read (" + fault.message() +
                     "), expected an IMDF archive");
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

}  // namespace

FolderArchive::FolderArchive(const fs::path& folder, const ArchiveLimits& limits)
    : folder_(folder),
      subfolder_(folderOfLevels(levelFilesIn(folder), folder.string())),
      budget_(folder.string(), limits.unfoldedBytes) {}

std::string FolderArchive::pathOf(const std::string& name) const {
  return (folder_ / (subfolder_ + name)).string();
}

std::optional<std::string> FolderArchive::text(const std::string& name) {
  const fs::path path = pathOf(name);
  std::error_code fault;
  const fs::file_status status = fs::status(path, fault);
  if (!fs::exists(status)) return {};
  // Others than plain files may never end.
  if (!fs::is_regular_file(status)) {
    const auto found = fs::is_directory(status) ? "a folder" : "something that is no file";
    throw InputError(path.string() + ": found " + found + ", expected a file");
  }
  refuseOutsider(path);
  return contents(path);
}

void FolderArchive::refuseOutsider(const fs::path& path) const {
  const fs::path root = fs::canonical(folder_);
  const fs::path target = fs::canonical(path);
  const auto end = std::mismatch(root.begin(), root.end(), target.begin(), target.end()).first;
  if (end == root.end()) return;
  throw InputError(path.string() + ": found a link that leads out of the archive, expected a file");
}

std::string FolderArchive::contents(const fs::path& path) {
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) {
    throw InputError(path.string() + ": found no readable file (" +
                     std::generic_category().message(errno) + "), expected a file of the archive");
  }
  std::string text;
  std::array<char, 65536> chunk{};
  while (stream.read(chunk.data(), chunk.size()), stream.gcount() > 0) {
    const auto read = static_cast<std::size_t>(stream.gcount());
    budget_.take(read);
    text.append(chunk.data(), read);
  }
  if (stream.bad()) {
    throw InputError(path.string() + ": found an unreadable file, expected a file of the archive");
  }
  return text;
}

}  // namespace KorvaniTools
