#include "Import/Imdf/ZipArchive.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "Building/JsonText.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

constexpr auto kExpectedArchive = "a folder or a zip file that holds an IMDF archive";

std::string textOf(zip_error_t* error) { return zip_error_strerror(error); }

std::string textOfOpening(int code) {
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  std::string text = textOf(&error);
  zip_error_fini(&error);
  return text;
}

/// Whether unfolding an entry of that name could write outside the folder it is unfolded to, on
/// any system.
bool leadsOut(std::string_view name) {
  if (name.empty() || name.front() == '/') return true;
  if (name.find_first_of("\\:") != std::string_view::npos) return true;
  for (std::size_t start = 0; start <= name.size();) {
    const std::size_t end = std::min(name.find('/', start), name.size());
    if (name.substr(start, end - start) == "..") return true;
    start = end + 1;
  }
  return false;
}

bool isSymbolicLink(zip_t* archive, zip_uint64_t index) {
  zip_uint8_t system = 0;
  zip_uint32_t attributes = 0;
  if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0) return false;
  return system == ZIP_OPSYS_UNIX && S_ISLNK(attributes >> 16U);
}

struct CloseEntry {
  void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

}  // namespace

ZipArchive::ZipArchive(const std::filesystem::path& file, const ArchiveLimits& limits)
    : file_(file.string()), budget_(file_, limits.unfoldedBytes) {
  int fault = 0;
  archive_.reset(zip_open(file_.c_str(), ZIP_RDONLY, &fault));
  if (!archive_) {
    refuse("no zip file that can be read (" + textOfOpening(fault) + ")", kExpectedArchive);
  }
  listEntries(limits);
  std::vector<std::string> paths;
  for (const auto& [path, index] : entries_) paths.push_back(path);
  folder_ = folderOfLevels(paths, file_);
}

void ZipArchive::refuse(const std::string& found, const std::string& expected) const {
  throw InputError(file_ + ": found " + found + ", expected " + expected);
}

void ZipArchive::listEntries(const ArchiveLimits& limits) {
  const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(archive_.get(), 0));
  if (count > limits.entries) {
    refuse(std::to_string(count) + " entries", "at most " + std::to_string(limits.entries));
  }
  std::uint64_t claimed = 0;
  for (zip_uint64_t index = 0; index < count; ++index) {
    listEntry(index, claimed);
    // Files that are not read count as well, as far as their claims can be believed.
    if (claimed <= limits.unfoldedBytes) continue;
    refuse("entries of more than " + std::to_string(limits.unfoldedBytes) + " bytes",
           "at most that many");
  }
}

void ZipArchive::listEntry(zip_uint64_t index, std::uint64_t& claimed) {
  zip_stat_t entry;
  zip_stat_init(&entry);
  const bool known = zip_stat_index(archive_.get(), index, 0, &entry) == 0;
  if (!known || (entry.valid & ZIP_STAT_NAME) == 0) {
    refuse("a damaged entry (" + textOf(zip_get_error(archive_.get())) + ")", "a sound zip file");
  }
  const std::string name = entry.name;
  checkEntry(index, name, entry);
  // The limit is far below where this sum could overflow: it is compared after each entry.
  if ((entry.valid & ZIP_STAT_SIZE) != 0) claimed += std::min(entry.size, zip_uint64_t{1} << 62U);
  const auto [position, isNew] = entries_.emplace(name, index);
  if (!isNew) refuse("the entry " + inQuotes(name) + " twice", "each entry once");
}

void ZipArchive::checkEntry(zip_uint64_t index, const std::string& name,
                            const zip_stat_t& entry) const {
  const std::string quoted = "the entry " + inQuotes(name);
  if (leadsOut(name)) {
    refuse(quoted, "entries that stay inside the archive, with / between folders");
  }
  if (isSymbolicLink(archive_.get(), index)) {
    refuse(quoted + ", a symbolic link", "files and folders");
  }
  if ((entry.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && entry.encryption_method != ZIP_EM_NONE) {
    refuse(quoted + ", which is encrypted", "entries without encryption");
  }
}

std::string ZipArchive::pathOf(const std::string& name) const {
  return file_ + '/' + folder_ + name;
}

std::optional<std::string> ZipArchive::text(const std::string& name) {
  const auto found = entries_.find(folder_ + name);
  if (found == entries_.end()) return {};
  return contents(pathOf(name), found->second);
}

std::string ZipArchive::contents(const std::string& path, zip_uint64_t index) {
  const std::unique_ptr<zip_file_t, CloseEntry> entry(zip_fopen_index(archive_.get(), index, 0));
  if (!entry) {
    throw InputError(path + ": found an entry that cannot be read (" +
                     textOf(zip_get_error(archive_.get())) + "), expected a sound one");
  }
  std::string text;
  std::array<char, 65536> chunk{};
  zip_int64_t read = 0;
  while ((read = zip_fread(entry.get(), chunk.data(), chunk.size())) > 0) {
    budget_.take(static_cast<std::uint64_t>(read));
    text.append(chunk.data(), static_cast<std::size_t>(read));
  }
  if (read < 0) {
    throw InputError(path + ": found a damaged entry (" + textOf(zip_file_get_error(entry.get())) +
                     "), expected a sound one");
  }
  return text;
}

}  // namespace KorvaniTools
