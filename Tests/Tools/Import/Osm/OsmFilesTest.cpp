#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <osmium/io/any_input.hpp>
#include <osmium/io/any_output.hpp>

#include "Import/Osm/OsmReader.hpp"
#include "Support/InputError.hpp"
#include "Tools/Import/Osm/OsmDrawing.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::InputError;
using KorvaniTools::readOsm;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;

std::string sampleXml() {
  OsmDrawing map({"a----b", "|    |", "d-e--c--f"});
  map.way("abceda", {{"indoor", "room"}, {"level", "0"}, {"name", "Grüße & <Co>"}});
  map.way("ef", {{"highway", "corridor"}, {"level", "0"}});
  map.relation({{map.way("abcea", {}), "outer"}}, {{"indoor", "area"}, {"level", "1"}});
  map.node('e', {{"door", "yes"}});
  return map.xml();
}

/// What the reader says about a file.
std::string complaintAbout(const std::filesystem::path& file) {
  try {
    readOsm(file, {});
  } catch (const InputError& error) {
    return error.what();
  }
  return "nothing";
}

TEST(OsmFiles, GiveTheSamePlanInEveryFormat) {
  for (const char* suffix : {".osm", ".osm.gz", ".osm.bz2", ".osm.pbf", ".PBF"}) {
    const bool pbf = std::string(suffix) == ".PBF";
    const OsmFile file(converted(sampleXml(), pbf ? ".osm.pbf" : suffix), suffix);
    const KorvaniTools::FloorPlan plan = readOsm(file.path(), {});
    ASSERT_THAT(plan.cells, SizeIs(2)) << suffix;
    EXPECT_EQ(plan.cells[0].name, "Grüße & <Co>") << suffix;
    EXPECT_THAT(plan.lines, SizeIs(1)) << suffix;
    EXPECT_THAT(plan.doors, SizeIs(1)) << suffix;
  }
}

TEST(OsmFiles, ThatAreNotThereAreErrors) {
  EXPECT_EQ(complaintAbout("nowhere.osm"), "cannot read nowhere.osm: there is no such file");
  EXPECT_THAT(complaintAbout("http://example.com/a.osm"), HasSubstr("there is no such file"));
}

TEST(OsmFiles, ThatAreFoldersAreErrors) {
  EXPECT_THAT(complaintAbout(std::filesystem::temp_directory_path()),
              EndsWith("it is no ordinary file"));
}

TEST(OsmFiles, WithAnotherEndingAreErrors) {
  const OsmFile file(sampleXml(), ".xml");
  EXPECT_THAT(complaintAbout(file.path()),
              AllOf(HasSubstr("found a name of another kind"),
                    EndsWith("expected one that ends in .osm, .osm.gz, .osm.bz2 or .osm.pbf")));
}

TEST(OsmFiles, OfMalformedXmlAreErrorsThatNameTheLine) {
  const OsmFile file("<?xml version=\"1.0\"?>\n<osm version=\"0.6\">\n<node id=\"1\"</osm>\n");
  EXPECT_EQ(complaintAbout(file.path()),
            file.path().string() +
                ": found XML parsing error at line 3, column 12: not well-formed "
                "(invalid token), expected OSM XML");
}

TEST(OsmFiles, OfOtherXmlAreErrors) {
  const OsmFile file("<?xml version=\"1.0\"?>\n<gpx version=\"1.1\"></gpx>\n");
  EXPECT_THAT(complaintAbout(file.path()), AllOf(HasSubstr("gpx"), EndsWith("expected OSM XML")));
}

TEST(OsmFiles, ThatAreEmptyAreErrors) {
  for (const char* suffix : {".osm", ".osm.gz", ".osm.bz2", ".osm.pbf"}) {
    const OsmFile file("", suffix);
    EXPECT_NE(complaintAbout(file.path()), "nothing") << suffix;
  }
}

TEST(OsmFiles, OfAnotherFormatThanTheirNameSaysAreErrors) {
  for (const char* suffix : {".osm.bz2", ".osm.pbf"}) {
    const OsmFile file(sampleXml(), suffix);
    EXPECT_THAT(complaintAbout(file.path()), AllOf(HasSubstr(file.path().string()),
                                                   HasSubstr("found "), HasSubstr("expected OSM")))
        << suffix;
  }
  for (const char* suffix : {".osm.gz", ".osm.bz2", ".osm.pbf"}) {
    const OsmFile packed(converted(sampleXml(), suffix), ".osm");
    EXPECT_THAT(complaintAbout(packed.path()), EndsWith("expected OSM XML")) << suffix;
  }
}

TEST(OsmFiles, ThatEndEarlyAreErrors) {
  for (const char* suffix : {".osm", ".osm.gz", ".osm.bz2", ".osm.pbf"}) {
    const std::string whole = converted(sampleXml(), suffix);
    const OsmFile file(whole.substr(0, whole.size() * 2 / 3), suffix);
    EXPECT_THAT(complaintAbout(file.path()), HasSubstr("expected OSM")) << suffix;
  }
}

TEST(OsmFiles, NameThePositionOfAFault) {
  const std::string whole = converted(sampleXml(), ".osm.pbf");
  const OsmFile file(whole.substr(0, whole.size() - 20), ".osm.pbf");
  EXPECT_THAT(
      complaintAbout(file.path()),
      AllOf(HasSubstr("near byte "), HasSubstr(" of " + std::to_string(whole.size() - 20))));
}

TEST(OsmFiles, WithAZeroByteInATagAreErrors) {
  const OsmFile plain(sampleXml());
  const OsmFile file("", ".osm.pbf");
  osmium::io::File target(file.path().string());
  target.set("pbf_compression", "none");
  osmium::io::Reader reader(plain.path().string());
  osmium::io::Writer writer(target, osmium::io::overwrite::allow);
  while (osmium::memory::Buffer buffer = reader.read()) writer(std::move(buffer));
  writer.close();
  std::string bytes = file.contents();
  ASSERT_NE(bytes.find("indoor"), std::string::npos);
  bytes[bytes.find("indoor") + 2] = '\0';
  std::ofstream(file.path(), std::ios::binary) << bytes;
  EXPECT_THAT(complaintAbout(file.path()),
              AllOf(HasSubstr("near byte "), HasSubstr("found a tag with a zero byte")));
}

TEST(OsmFiles, WithEntitiesThatUnfoldAreErrors) {
  const OsmFile file(
      "<?xml version=\"1.0\"?>\n<!DOCTYPE osm [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]>\n"
      "<osm version=\"0.6\"><node id=\"1\" lat=\"1\" lon=\"1\"><tag k=\"name\" v=\"&b;\"/></node>"
      "</osm>\n");
  EXPECT_THAT(complaintAbout(file.path()), EndsWith("expected OSM XML"));
}

TEST(OsmFiles, WithNumbersThatAreNoneAreErrors) {
  const std::string xml = sampleXml();
  for (const auto& [from, to] : {std::pair<std::string, std::string>{"id=\"97\"", "id=\"x\""},
                                 {"lat=\"48", "lat=\"north"},
                                 {"ref=\"97\"", "ref=\"99999999999999999999\""}}) {
    std::string broken = xml;
    ASSERT_NE(broken.find(from), std::string::npos) << from;
    broken.replace(broken.find(from), from.size(), to);
    const OsmFile file(broken);
    EXPECT_THAT(complaintAbout(file.path()), EndsWith("expected OSM XML")) << to;
  }
}

/// Changes a byte in every place in turn, and cuts the file there: whatever comes of it, the
/// reader gives a plan or says what is wrong.
void expectSurvival(const std::string& suffix, std::size_t step) {
  const std::string whole = converted(sampleXml(), suffix);
  const OsmFile file("", suffix);
  std::size_t refused = 0;
  for (std::size_t at = 0; at < whole.size(); at += step) {
    for (const bool cut : {false, true}) {
      std::string broken = cut ? whole.substr(0, at) : whole;
      if (!cut) broken[at] = static_cast<char>(broken[at] ^ (1 << (at % 8)));
      std::ofstream(file.path(), std::ios::binary | std::ios::trunc) << broken;
      refused += complaintAbout(file.path()) == "nothing" ? 0 : 1;
    }
  }
  EXPECT_GT(refused, whole.size() / step) << "of the files that are cut, all should be refused";
}

TEST(OsmFiles, SurviveBrokenBytesInXml) { expectSurvival(".osm", 17); }

TEST(OsmFiles, SurviveBrokenBytesInGzip) { expectSurvival(".osm.gz", 7); }

TEST(OsmFiles, SurviveBrokenBytesInBzip2) { expectSurvival(".osm.bz2", 7); }

TEST(OsmFiles, SurviveBrokenBytesInPbf) { expectSurvival(".osm.pbf", 7); }

}  // namespace
}  // namespace KorvaniTest
