#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Import/Imdf/ImdfArchive.hpp"
#include "Tools/Import/Imdf/TestArchive.hpp"
#include "Tools/Import/Imdf/ZipWriter.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::ArchiveLimits;
using KorvaniTools::InputError;
using KorvaniTools::openImdfArchive;
using testing::HasSubstr;

/// Zip files of one folder, which hold a level file and further entries.
class ZipArchives : public testing::Test {
 protected:
  std::filesystem::path zip() const { return folder_.path() / "hall.zip"; }

  void write(std::vector<ZipEntry> entries) const {
    entries.insert(entries.begin(), {"level.geojson", "levels"});
    writeZip(zip(), entries);
  }

  /// What opening the file, and reading levels and units, gives as an error after the file's
  /// name; the test fails when it is not named.
  std::string errorOf(const ArchiveLimits& limits = {}) const {
    try {
      const auto archive = openImdfArchive(zip(), limits);
      archive->text("level.geojson");
      archive->text("unit.geojson");
    } catch (const InputError& error) {
      const std::string text = error.what();
      EXPECT_EQ(text.find(zip().string()), 0U) << text;
      return text.substr(zip().string().size());
    }
    return "";
  }

  const TemporaryFolder folder_;
};

TEST_F(ZipArchives, GiveTheTextOfTheirFiles) {
  write({{"unit.geojson", "units"}});
  const auto archive = openImdfArchive(zip(), {});
  EXPECT_EQ(archive->text("level.geojson"), "levels");
  EXPECT_EQ(archive->text("unit.geojson"), "units");
  EXPECT_FALSE(archive->text("opening.geojson"));
  EXPECT_EQ(archive->pathOf("unit.geojson"), zip().string() + "/unit.geojson");
}

TEST_F(ZipArchives, MayHaveTheirFilesInOneFolder) {
  writeZip(
      zip(),
      {{"hall/", ""}, {"hall/level.geojson", "levels"}, {"__MACOSX/hall/._level.geojson", "x"}});
  const auto archive = openImdfArchive(zip(), {});
  EXPECT_EQ(archive->text("level.geojson"), "levels");
  EXPECT_EQ(archive->pathOf("unit.geojson"), zip().string() + "/hall/unit.geojson");
}

TEST_F(ZipArchives, ReadAsTheFolderDoes) {
  std::vector<ZipEntry> entries;
  for (const auto& [name, text] : smallArchive().files()) entries.push_back({name, text});
  writeZip(zip(), entries);
  const FloorPlan plan = KorvaniTools::readImdf(zip(), {});
  EXPECT_EQ(plan.cells.size(), 2U);
  EXPECT_EQ(plan.doors.size(), 1U);
}

TEST_F(ZipArchives, ErrorsInTheirFilesNameZipFileAndFeature) {
  TestArchive archive = smallArchive();
  archive.properties("level", "level0").erase("ordinal");
  std::vector<ZipEntry> entries;
  for (const auto& [name, text] : archive.files()) entries.push_back({name, text});
  writeZip(zip(), entries);
  try {
    KorvaniTools::readImdf(zip(), {});
    ADD_FAILURE() << "nothing was found wrong";
  } catch (const KorvaniTools::BuildingError& error) {
    EXPECT_EQ(error.what(), zip().string() +
                                "/level.geojson: features[0]: ordinal of level \"level0\": found "
                                "nothing, expected an integer");
  }
}

TEST_F(ZipArchives, WithEntriesThatLeadOutAreRefused) {
  for (const char* name : {"../unit.geojson", "a/../../unit.geojson", "/etc/passwd", "a/..",
                           "..\\unit.geojson", "C:unit.geojson", "c:/unit.geojson"}) {
    write({{name, "units"}});
    EXPECT_EQ(errorOf(), ": found the entry \"" + std::string(name) +
                             "\", expected entries that stay inside the archive, with / between "
                             "folders");
  }
}

TEST_F(ZipArchives, NamesWithDotsAreNoWayOut) {
  write({{"..unit.geojson", ""}, {"a..b/...", ""}, {"unit.geojson", "units"}});
  EXPECT_EQ(errorOf(), "");
}

TEST_F(ZipArchives, WithSymbolicLinksAreRefused) {
  write({{"unit.geojson", "/etc/passwd", "", true}});
  EXPECT_EQ(errorOf(),
            ": found the entry \"unit.geojson\", a symbolic link, expected files and folders");
}

TEST_F(ZipArchives, WithEncryptedEntriesAreRefused) {
  write({{"unit.geojson", "units", "secret"}});
  EXPECT_EQ(errorOf(),
            ": found the entry \"unit.geojson\", which is encrypted, expected entries "
            "without encryption");
}

TEST_F(ZipArchives, WithAnEntryTwiceAreRefused) {
  write({{"levem.geojson", "others"}});
  patchFile(zip(), "levem.geojson", "level.geojson");
  EXPECT_EQ(errorOf(), ": found the entry \"level.geojson\" twice, expected each entry once");
}

TEST_F(ZipArchives, WithAFolderInTheLevelFilesPlaceAreRefused) {
  writeZip(zip(), {{"level.geojson/", ""}, {"unit.geojson", "units"}});
  EXPECT_THAT(errorOf(), HasSubstr("found no level.geojson, expected one"));
}

TEST_F(ZipArchives, WithTooManyEntriesAreRefused) {
  write({{"a", ""}, {"b", ""}});
  ArchiveLimits limits;
  limits.entries = 3;
  EXPECT_EQ(errorOf(limits), "");
  limits.entries = 2;
  EXPECT_EQ(errorOf(limits), ": found 3 entries, expected at most 2");
}

TEST_F(ZipArchives, ThatUnfoldBeyondTheLimitAreRefused) {
  write({{"unit.geojson", std::string(5'000'000, '0')}});
  ASSERT_LT(std::filesystem::file_size(zip()), 50'000U);
  ArchiveLimits limits;
  limits.unfoldedBytes = 5'000'006;
  EXPECT_EQ(errorOf(limits), "");
  limits.unfoldedBytes = 5'000'005;
  EXPECT_EQ(errorOf(limits),
            ": found entries of more than 5000005 bytes, expected at most that many");
}

TEST_F(ZipArchives, ThatClaimToBeSmallAreRefusedAllTheSame) {
  writeZip(zip(), {{"level.geojson", std::string(5'000'000, '0')}});
  claimSizes(zip(), 10);
  ArchiveLimits limits;
  limits.unfoldedBytes = 1'000'000;
  EXPECT_EQ(errorOf(limits),
            ": found more than 1000000 bytes in its files, expected at most that many");
}

TEST_F(ZipArchives, CountWhatIsRead) {
  write({{"unit.geojson", std::string(600, '0')}});
  ArchiveLimits limits;
  limits.unfoldedBytes = 1000;
  const auto archive = openImdfArchive(zip(), limits);
  EXPECT_EQ(archive->text("unit.geojson")->size(), 600U);
  EXPECT_THROW(archive->text("unit.geojson"), InputError);
}

TEST_F(ZipArchives, CutOffAnywhereAreRefused) {
  write({{"unit.geojson", "units"}});
  const std::string whole = bytesOf(zip());
  for (std::size_t length = 0; length < whole.size(); ++length) {
    writeBytes(zip(), whole.substr(0, length));
    EXPECT_NE(errorOf(), "") << length << " bytes";
  }
}

TEST_F(ZipArchives, WithAnyByteChangedGiveTextOrAnError) {
  write({{"unit.geojson", "units"}});
  const std::string whole = bytesOf(zip());
  std::size_t refused = 0;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string changed = whole;
    changed[at] = static_cast<char>(changed[at] ^ 0x55);
    writeBytes(zip(), changed);
    refused += errorOf().empty() ? 0 : 1;
  }
  EXPECT_GT(refused, whole.size() / 4);
}

TEST_F(ZipArchives, WithChangedContentsAreRefused) {
  write({{"unit.geojson", "many units", "", false, true}});
  patchFile(zip(), "many units", "manY units");
  EXPECT_THAT(errorOf(), HasSubstr("/unit.geojson: found a damaged entry (CRC error)"));
}

TEST_F(ZipArchives, ThatAreNoneAreRefused) {
  writeBytes(zip(), "PK, but no archive");
  EXPECT_THAT(errorOf(), HasSubstr(": found no zip file that can be read (Not a zip archive), "
                                   "expected a folder or a zip file that holds an IMDF archive"));
}

}  // namespace
}  // namespace KorvaniTest
