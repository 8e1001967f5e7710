#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Import/Imdf/ImdfArchive.hpp"
#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::ArchiveLimits;
using KorvaniTools::InputError;
using KorvaniTools::openImdfArchive;
using testing::HasSubstr;

/// What opening the folder, and reading its units, gives as an error.
std::string errorIn(const std::filesystem::path& path, const ArchiveLimits& limits = {}) {
  try {
    openImdfArchive(path, limits)->text("unit.geojson");
  } catch (const InputError& error) {
    return error.what();
  }
  return "";
}

TEST(FolderArchives, GiveTheTextOfTheirFiles) {
  const TemporaryFolder folder;
  folder.write("level.geojson", "levels");
  const auto archive = openImdfArchive(folder.path(), {});
  EXPECT_EQ(archive->text("level.geojson"), "levels");
  EXPECT_FALSE(archive->text("unit.geojson"));
  EXPECT_EQ(archive->pathOf("unit.geojson"), (folder.path() / "unit.geojson").string());
}

TEST(FolderArchives, MayHaveTheirFilesInOneFolder) {
  const TemporaryFolder folder;
  folder.write("terminal/level.geojson", "levels");
  folder.write("other/readme.txt", "");
  const auto archive = openImdfArchive(folder.path(), {});
  EXPECT_EQ(archive->text("level.geojson"), "levels");
  EXPECT_THAT(archive->pathOf("unit.geojson"), HasSubstr("terminal/unit.geojson"));
}

TEST(FolderArchives, OfTwoVenuesAreRefused) {
  const TemporaryFolder folder;
  folder.write("b/level.geojson", "");
  folder.write("a/level.geojson", "");
  EXPECT_EQ(errorIn(folder.path()),
            folder.path().string() + ": found archives in \"a/\" and \"b/\", expected one");
}

TEST(FolderArchives, WithoutLevelsAreRefused) {
  const TemporaryFolder folder;
  EXPECT_EQ(errorIn(folder.path()), folder.path().string() +
                                        ": found no level.geojson, expected one at the top of the "
                                        "archive or in one folder there");
}

TEST(FolderArchives, WithAFolderInAFilesPlaceAreRefused) {
  const TemporaryFolder folder;
  folder.write("level.geojson", "");
  folder.write("unit.geojson/unit.geojson", "");
  EXPECT_THAT(errorIn(folder.path()), HasSubstr("unit.geojson: found a folder, expected a file"));
}

TEST(FolderArchives, FollowLinksThatStayInside) {
  const TemporaryFolder folder;
  folder.write("level.geojson", "");
  folder.write("files/units", "units");
  std::filesystem::create_symlink("files/units", folder.path() / "unit.geojson");
  EXPECT_EQ(openImdfArchive(folder.path(), {})->text("unit.geojson"), "units");
}

TEST(FolderArchives, RefuseLinksThatLeadOut) {
  const TemporaryFolder outside;
  outside.write("units", "units");
  const TemporaryFolder folder;
  folder.write("level.geojson", "");
  std::filesystem::create_symlink(outside.path() / "units", folder.path() / "unit.geojson");
  EXPECT_THAT(errorIn(folder.path()),
              HasSubstr("unit.geojson: found a link that leads out of the archive"));
}

TEST(FolderArchives, RefuseWhatMayNeverEnd) {
  const TemporaryFolder folder;
  folder.write("level.geojson", "");
  ASSERT_EQ(mkfifo((folder.path() / "unit.geojson").c_str(), 0600), 0);
  EXPECT_THAT(errorIn(folder.path()),
              HasSubstr("unit.geojson: found something that is no file, expected a file"));
}

TEST(FolderArchives, RefuseMoreThanTheLimit) {
  const TemporaryFolder folder;
  folder.write("level.geojson", "");
  folder.write("unit.geojson", std::string(1001, ' '));
  ArchiveLimits limits;
  limits.unfoldedBytes = 1001;
  EXPECT_EQ(errorIn(folder.path(), limits), "");
  limits.unfoldedBytes = 1000;
  EXPECT_EQ(errorIn(folder.path(), limits),
            folder.path().string() +
                ": found more than 1000 bytes in its files, expected at most that many");
}

TEST(FolderArchives, ThatAreNotThereAreNamed) {
  const TemporaryFolder folder;
  EXPECT_THAT(errorIn(folder.path() / "nowhere"),
              HasSubstr("nowhere: found no zip file that can be read (No such file)"));
}

}  // namespace
}  // namespace KorvaniTest
