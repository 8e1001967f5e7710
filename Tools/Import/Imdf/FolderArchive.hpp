#pragma once

/// Internal. An archive whose files lie in a folder.

#include <filesystem>
#include <string>

#include "Import/Imdf/ByteBudget.hpp"
#include "Import/Imdf/ImdfArchive.hpp"

namespace KorvaniTools {

class FolderArchive : public ImdfArchive {
 public:
  /// @throws InputError when the folder holds no level file
  FolderArchive(const std::filesystem::path& folder, const ArchiveLimits& limits);

  std::optional<std::string> text(const std::string& name) override;
  std::string pathOf(const std::string& name) const override;

 private:
  void refuseOutsider(const std::filesystem::path& path) const;
  std::string contents(const std::filesystem::path& path);

  std::filesystem::path folder_;
  std::string subfolder_;
  ByteBudget budget_;
};

}  // namespace KorvaniTools
