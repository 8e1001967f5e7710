#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Building/BuildingReader.hpp"
#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

/// A room on two levels' height beside a corridor, with stairs up to a gallery that is half a
/// level higher.
constexpr auto kStation = R"(<?xml version="1.0" encoding="UTF-8"?>
<osm version="0.6">
<node id="1" lat="48.0000" lon="11.0000"/><node id="2" lat="48.0000" lon="11.0003"/>
<node id="3" lat="48.0001" lon="11.0003"/><node id="4" lat="48.0001" lon="11.0000"/>
<node id="5" lat="48.0001" lon="11.00015"><tag k="door" v="hinged"/></node>
<node id="6" lat="48.0002" lon="11.00015"/>
<node id="7" lat="48.0003" lon="11.00015"><tag k="entrance" v="main"/></node>
<node id="8" lat="48.0002" lon="11.0005"/><node id="9" lat="48.0002" lon="11.0008"/>
<way id="1"><nd ref="1"/><nd ref="2"/><nd ref="3"/><nd ref="5"/><nd ref="4"/><nd ref="1"/>
  <tag k="indoor" v="room"/><tag k="level" v="0"/><tag k="name" v="Waiting room"/></way>
<way id="2"><nd ref="5"/><nd ref="6"/><nd ref="7"/>
  <tag k="highway" v="corridor"/><tag k="level" v="0"/></way>
<way id="3"><nd ref="6"/><nd ref="8"/><tag k="highway" v="steps"/><tag k="level" v="0;0.5"/></way>
<way id="4"><nd ref="8"/><nd ref="9"/><tag k="highway" v="footway"/><tag k="level" v="0,5"/></way>
<way id="5"><nd ref="1"/><nd ref="9"/>
  <tag k="indoor" v="wall"/></way>
</osm>
)";

/// A file of this process's own with that name's ending.
class Input {
 public:
  explicit Input(const std::string& text, const std::string& suffix = ".osm")
      : path_(base_.path() + suffix) {
    std::ofstream(path_, std::ios::binary) << text;
  }
  ~Input() { std::filesystem::remove(path_); }
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  const std::string& path() const { return path_; }

 private:
  TemporaryFile base_;
  std::string path_;
};

class ImportCommand : public testing::Test {
 protected:
  Outcome import(std::vector<std::string> further = {}) const {
    std::vector<std::string> arguments{"import", "osm", station_.path(), "-o", output_.path()};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return runTool(arguments);
  }
  Building building() const { return KorvaniTools::readBuilding(output_.path()); }

  const Input station_{kStation};
  const TemporaryFile output_{"old"};
};

TEST_F(ImportCommand, HelpNamesEveryOption) {
  const Outcome osm = runTool({"import", "osm", "--help"});
  EXPECT_EQ(osm.status, 0);
  for (const char* option : {"--output", "--bbox", "--name", "--connections", "--assume-doors",
                             "--all-remarks", "--quiet", "100 m", ".osm.pbf"}) {
    EXPECT_THAT(osm.output, HasSubstr(option));
  }
  const Outcome imdf = runTool({"import", "imdf", "--help"});
  EXPECT_EQ(imdf.status, 0);
  for (const char* option : {"--output", "--name", "--connections", "--assume-doors", "--quiet",
                             "--language", "--attribution", "--licence"}) {
    EXPECT_THAT(imdf.output, HasSubstr(option));
  }
}

TEST_F(ImportCommand, WritesABuilding) {
  const Outcome outcome = import();
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  EXPECT_THAT(outcome.output, IsEmpty());
  const Building made = building();
  EXPECT_EQ(made.attribution, "© OpenStreetMap contributors, ODbL 1.0");
  EXPECT_EQ(made.licence, "ODbL-1.0");
  EXPECT_THAT(made.rooms, SizeIs(1));
  EXPECT_THAT(made.places, SizeIs(2));
  EXPECT_THAT(made.edges, Not(IsEmpty()));
}

TEST_F(ImportCommand, GivesTheSameBytesEachTime) {
  EXPECT_EQ(import().status, 0);
  const std::string first = output_.text();
  EXPECT_EQ(import().status, 0);
  EXPECT_EQ(output_.text(), first);
}

TEST_F(ImportCommand, MakesRoutesPossible) {
  ASSERT_EQ(import().status, 0);
  const Outcome route =
      runTool({"route", output_.path(), "--from", "Main entrance", "--to", "Waiting room"});
  EXPECT_EQ(route.status, 0) << route.errors;
}

TEST_F(ImportCommand, SumsUpOnStandardError) {
  const std::string errors = import({"--name", "Halt"}).errors;
  EXPECT_THAT(errors, StartsWith("Halt\n"));
  EXPECT_THAT(errors, HasSubstr("levels       2: 0 -> 0, 0.5 -> 1\n"));
  EXPECT_THAT(errors, HasSubstr("places       2 (1 entrance)\n"));
  EXPECT_THAT(errors, HasSubstr("rooms        1\n"));
  EXPECT_THAT(errors, HasSubstr("remark       1 feature indoors has no level and was put on level "
                                "0: way/5\n"));
  EXPECT_EQ(building().name, "Halt");
}

TEST_F(ImportCommand, NamesTheFirstFeaturesOfARemarkOrAll) {
  std::string map = kStation;
  std::string walls;
  for (int way = 101; way <= 130; ++way) {
    walls += "<way id=\"" + std::to_string(way) +
             "\"><nd ref=\"1\"/><nd ref=\"9\"/><tag k=\"indoor\" v=\"wall\"/></way>\n";
  }
  map.insert(map.find("</osm>"), walls);
  const Input input(map);
  std::vector<std::string> arguments{"import", "osm", input.path(), "-o", output_.path()};
  const std::string first = runTool(arguments).errors;
  EXPECT_THAT(first, HasSubstr("31 features indoors have no level and were put on level 0: way/5, "
                               "way/101, way/102, way/103, way/104 and 26 more\n"));
  EXPECT_THAT(first, Not(HasSubstr("way/130")));
  arguments.emplace_back("--all-remarks");
  EXPECT_THAT(runTool(arguments).errors, HasSubstr("way/129, way/130\n"));
}

TEST_F(ImportCommand, WritesNamesOnOneLine) {
  const std::string errors = import({"--name", "Halt\nremark  all is well"}).errors;
  EXPECT_THAT(errors, StartsWith("Halt\\nremark  all is well\n"));
}

TEST_F(ImportCommand, ShowsNoProgressAwayFromATerminal) {
  EXPECT_THAT(import().errors, Not(HasSubstr("\r")));
}

TEST_F(ImportCommand, ShowsProgressOnATerminal) {
  const std::vector<std::string> arguments{"import", "osm", station_.path(), "-o", output_.path()};
  const Outcome shown = runToolOnTerminal(arguments, {});
  EXPECT_EQ(shown.status, 0);
  EXPECT_THAT(shown.output, HasSubstr("100%"));
  std::vector<std::string> quiet = arguments;
  quiet.emplace_back("--quiet");
  EXPECT_THAT(runToolOnTerminal(quiet, {}).output, IsEmpty());
}

TEST_F(ImportCommand, SaysNothingWhenQuiet) {
  const Outcome outcome = import({"--quiet"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, IsEmpty());
}

TEST_F(ImportCommand, TakesATableOfConnections) {
  const TemporaryFile table(R"({"stairs": {"multiplicator": 7.5, "type": "ladder-like"}})");
  EXPECT_EQ(import({"--connections", table.path()}).status, 0);
  bool found = false;
  for (const auto& edge : building().edges) {
    found = found || (edge.type == "ladder-like" && edge.multiplicator == 7.5);
  }
  EXPECT_TRUE(found);
}

TEST_F(ImportCommand, KeepsWhatTouchesTheBox) {
  EXPECT_EQ(import({"--bbox", "11.0006,48.00019,11.0009,48.00021"}).status, 0);
  const Building made = building();
  EXPECT_THAT(made.rooms, IsEmpty());
  EXPECT_THAT(made.nodes, SizeIs(2));
}

TEST_F(ImportCommand, BadInputIsStatusTwoAndLeavesTheOutputAsItWas) {
  const Input broken("<osm version=\"0.6\">\n<node>");
  const Input empty("<osm version=\"0.6\"></osm>");
  const TemporaryFile table(R"({"stairz": {}})");
  const struct {
    std::vector<std::string> arguments;
    const char* complaint;
  } cases[] = {
      {{"import", "osm", broken.path(), "-o", output_.path()}, "line 2, column 6"},
      {{"import", "osm", empty.path(), "-o", output_.path()}, "found nothing indoors"},
      {{"import", "osm", "nowhere.osm", "-o", output_.path()}, "there is no such file"},
      {{"import", "osm", station_.path(), "-o", output_.path(), "--bbox", "1,2,3"},
       "--bbox: found 1,2,3, expected W,S,E,N in degrees"},
      {{"import", "osm", station_.path(), "-o", output_.path(), "--bbox", "3,2,1,4"}, "--bbox"},
      {{"import", "osm", station_.path(), "-o", output_.path(), "--bbox", "a,b,c,d"}, "--bbox"},
      {{"import", "osm", station_.path(), "-o", output_.path(), "--bbox", "0,nan,1,2"}, "--bbox"},
      {{"import", "osm", station_.path(), "-o", output_.path(), "--connections", table.path()},
       "stairz"},
      {{"import", "imdf", "nowhere", "-o", output_.path()}, "nowhere"}};
  for (const auto& each : cases) {
    const Outcome outcome = runTool(each.arguments);
    EXPECT_EQ(outcome.status, 2) << testing::PrintToString(each.arguments);
    EXPECT_THAT(outcome.errors, AllOf(StartsWith("korvani-nav: "), HasSubstr(each.complaint)));
  }
  EXPECT_EQ(output_.text(), "old");
}

TEST_F(ImportCommand, WrongUsageIsStatusTwo) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"import"},
        {"import", "osm"},
        {"import", "gpx", "a", "-o", "b"},
        {"import", "osm", station_.path()},
        {"import", "imdf", "a", "-o", "b", "--bbox", "1,2,3,4"}}) {
    EXPECT_EQ(runTool(arguments).status, 2) << testing::PrintToString(arguments);
  }
}

TEST_F(ImportCommand, DoesNotOverwriteWhatItImports) {
  const Outcome outcome = runTool({"import", "osm", station_.path(), "-o", station_.path()});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.errors, HasSubstr("-o: found the file to import"));
}

TEST_F(ImportCommand, WritesToStandardOutput) {
  const Outcome outcome = runTool({"import", "osm", station_.path(), "-o", "-", "--quiet"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NO_THROW(KorvaniTools::parseBuilding(outcome.output, "output"));
}

}  // namespace
}  // namespace KorvaniTest
