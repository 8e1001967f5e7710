#pragma once

/// Internal. An archive whose files lie in a zip file.

#include <zip.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "Import/Imdf/ByteBudget.hpp"
#include "Import/Imdf/ImdfArchive.hpp"

namespace KorvaniTools {

class ZipArchive : public ImdfArchive {
 public:
  /// @throws InputError when it is no zip file, or one that `openImdfArchive` refuses
  ZipArchive(const std::filesystem::path& file, const ArchiveLimits& limits);

  std::optional<std::string> text(const std::string& name) override;
  std::string pathOf(const std::string& name) const override;

 private:
  struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
  };

  [[noreturn]] void refuse(const std::string& found, const std::string& expected) const;
  void listEntries(const ArchiveLimits& limits);
  void listEntry(zip_uint64_t index, std::uint64_t& claimed);
  void checkEntry(zip_uint64_t index, const std::string& name, const zip_stat_t& entry) const;
  std::string contents(const std::string& path, zip_uint64_t index);

  std::string file_;
  std::unique_ptr<zip_t, Discard> archive_;
  std::map<std::string, zip_uint64_t> entries_;  ///< files only, by their whole path
  std::string folder_;
  ByteBudget budget_;
};

}  // namespace KorvaniTools
