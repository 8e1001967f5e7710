#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "Tools/BuildingText.hpp"
#include "Tools/Drawing/XmlTree.hpp"
#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

namespace fs = std::filesystem;

const std::string kTerminal =
    std::string(KORVANI_SOURCE_DIR) + "/Examples/Buildings/terminal.building.geojson";

/// `korvani-nav draw` into a folder of its own.
class DrawCommand : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = marker_.path() + ".pictures";
    fs::create_directory(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  Outcome draw(std::vector<std::string> arguments, const std::string& output) const {
    arguments.insert(arguments.begin(), "draw");
    arguments.insert(arguments.end(), {"-o", path(output)});
    return runTool(arguments);
  }

  std::string written(const std::string& name) const {
    std::string text;
    if (std::FILE* file = std::fopen(path(name).c_str(), "rb")) {
      for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) text += static_cast<char>(c);
      std::fclose(file);
    }
    return text;
  }

  /// Nothing was written, and the tool says why.
  void expectRefused(const Outcome& outcome, int status, const std::string& words) const {
    EXPECT_EQ(outcome.status, status);
    EXPECT_NE(outcome.errors.find(words), std::string::npos) << outcome.errors;
    EXPECT_TRUE(fs::is_empty(folder_));
  }

 private:
  TemporaryFile marker_;
  fs::path folder_;
};

TEST_F(DrawCommand, WritesAPictureOfAllLevels) {
  const Outcome outcome = draw({kTerminal}, "plan.svg");
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(parsedXml(written("plan.svg")).ofClass("level").size(), 4U);
}

TEST_F(DrawCommand, DrawsARoute) {
  const Outcome outcome =
      draw({kTerminal, "--route", "Main entrance", "Gate B4", "--theme", "dark"}, "way.svg");
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  const XmlElement root = parsedXml(written("way.svg"));
  EXPECT_EQ(root.ofClass("start").size(), 1U);
  EXPECT_EQ(root.ofClass("destination").front()->attribute("data-place"), "Gate B4");
  EXPECT_FALSE(root.ofClass("arrow").empty());
}

TEST_F(DrawCommand, DrawsOneLevelByItsName) {
  EXPECT_EQ(draw({kTerminal, "--level", "departures", "--graph"}, "plan.svg").status, 0);
  const XmlElement root = parsedXml(written("plan.svg"));
  ASSERT_EQ(root.ofClass("level").size(), 1U);
  EXPECT_EQ(root.ofClass("level").front()->attribute("data-level"), "1");
  EXPECT_FALSE(root.ofClass("edge").empty());
}

TEST_F(DrawCommand, DrawsWhereAWalkWentAlong) {
  const std::string trace = path("walk.trace.ndjson");
  ASSERT_EQ(runTool({"simulate", kTerminal, "--from", "Main entrance", "--to", "Bakery", "--noise",
                     "2", "-o", trace})
                .status,
            0);
  const Outcome outcome = draw({kTerminal, "--trace", trace}, "walk.svg");
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  const XmlElement root = parsedXml(written("walk.svg"));
  EXPECT_GT(root.ofClass("measured").size(), 10U);
  EXPECT_GT(root.ofClass("snapped").size(), 10U);
  EXPECT_FALSE(root.ofClass("arrow").empty());
  EXPECT_EQ(root.ofClass("start").front()->attribute("data-place"), "Main entrance");
}

TEST_F(DrawCommand, DrawsJumpsThatWereDenied) {
  const std::string golden = std::string(KORVANI_SOURCE_DIR) + "/Tests/Golden/";
  const Outcome outcome = draw(
      {golden + "corridor.building.geojson", "--trace", golden + "deniers.trace.ndjson"}, "d.svg");
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  const XmlElement root = parsedXml(written("d.svg"));
  EXPECT_EQ(root.ofClass("level").front()->ofClass("denied").size(), 3U);
  EXPECT_GT(root.ofClass("measured").size(), 5U);
}

TEST_F(DrawCommand, WritesAPage) {
  const Outcome outcome = draw({kTerminal, "--route", "Main entrance", "Gate B4"}, "way.html");
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  EXPECT_EQ(written("way.html").rfind("<!DOCTYPE html>", 0), 0U);
}

TEST_F(DrawCommand, WritesNothingWithoutAWay) {
  const TemporaryFile building(
      buildingText({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11, 48.001), placeAt("A", 0, 11, 48),
                    placeAt("B", 0, 11, 48.001)}));
  expectRefused(draw({building.path(), "--route", "A", "B"}, "way.svg"), 1,
                "no way found from A to B");
}

TEST_F(DrawCommand, AsksForAnOutput) {
  expectRefused(runTool({"draw", kTerminal}), 2, "expected -o with a name that ends in .svg");
}

TEST_F(DrawCommand, RefusesOtherEndings) {
  expectRefused(draw({kTerminal}, "plan.png"), 2, "found the ending .png, expected");
  expectRefused(draw({kTerminal}, "plan"), 2, "found no ending");
}

TEST_F(DrawCommand, RefusesWhatItDoesNotKnow) {
  expectRefused(draw({kTerminal, "--level", "9"}, "plan.svg"), 2, "there is no level 9 to draw");
  expectRefused(draw({kTerminal, "--level", "attic"}, "plan.svg"), 2, "--level: found attic");
  expectRefused(draw({kTerminal, "--route", "Main entrance", "Nowhere"}, "a.svg"), 2, "Nowhere");
  expectRefused(draw({kTerminal, "--theme", "pink"}, "plan.svg"), 2, "pink");
  expectRefused(draw({kTerminal, "--route", "Main entrance"}, "plan.svg"), 2, "--route");
  expectRefused(draw({kTerminal, "--config", "colour=red"}, "plan.svg"), 2, "colour");
  expectRefused(draw({kTerminal, "--level", "1"}, "plan.html"), 2, "--level is for pictures");
}

TEST_F(DrawCommand, RefusesATraceTogetherWithARoute) {
  const Outcome outcome =
      draw({kTerminal, "--trace", "walk.trace.ndjson", "--route", "A", "B"}, "plan.svg");
  expectRefused(outcome, 2, "--route");
}

TEST_F(DrawCommand, NamesWhatIsWrongWithItsFiles) {
  expectRefused(draw({"missing.building.geojson"}, "plan.svg"), 2, "missing.building.geojson");
  const TemporaryFile trace("{\"op\":\"dance\"}\n");
  expectRefused(draw({kTerminal, "--trace", trace.path()}, "plan.svg"), 2, "dance");
}

TEST_F(DrawCommand, DrawsAnEmptyBuilding) {
  const TemporaryFile building(buildingText({}));
  EXPECT_EQ(draw({building.path()}, "plan.svg").status, 0);
  EXPECT_TRUE(parsedXml(written("plan.svg")).ofClass("level").empty());
}

}  // namespace
}  // namespace KorvaniTest
