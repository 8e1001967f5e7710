#include "Drawing/SceneSvg.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "Support/InputError.hpp"
#include "Tools/BuildingText.hpp"
#include "Tools/Drawing/XmlTree.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using KorvaniTools::DrawingTheme;
using KorvaniTools::makeScene;
using KorvaniTools::ScaleBar;
using KorvaniTools::scaleBarFor;
using KorvaniTools::Scene;
using KorvaniTools::sceneSvg;
using KorvaniTools::SceneSvgOptions;
using Texts = std::vector<std::string>;

Scene house() {
  return makeScene(
      parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 0, 11.001, 48.0005), nodeAt(3, -1, 11, 48),
              nodeAt(4, 2, 11, 48), edgeOf(1, 2), edgeOf(1, 3, R"("type":"stairs")"),
              placeAt("Desk", 0, 11.0005, 48.0002, R"("category":"information")")},
             R"("name":"Town hall","attribution":"\u00a9 Mappers","licence":"CC0",)"
             R"("levels":[{"level":2,"name":"Attic"}])"));
}

XmlElement drawnSheet(const Scene& scene, const SceneSvgOptions& options = {}) {
  return parsedXml(sceneSvg(scene, options));
}

Texts textsOf(const XmlElement& root, const std::string& word) {
  Texts texts;
  for (const XmlElement* element : root.ofClass(word)) texts.push_back(element->text);
  return texts;
}

TEST(SceneSvg, IsAPictureWithTitleAndDescription) {
  const XmlElement root = drawnSheet(house());
  EXPECT_EQ(root.name, "svg");
  EXPECT_EQ(root.attribute("role"), "img");
  EXPECT_EQ(root.named("title").front()->text, "Town hall");
  EXPECT_NE(root.named("desc").front()->text.find("Level 2 \u00b7 Attic, Level 0, Level -1"),
            std::string::npos);
}

TEST(SceneSvg, ShowsLevelsFromTheHighestDown) {
  const XmlElement root = drawnSheet(house());
  EXPECT_EQ(textsOf(root, "title"), (Texts{"Level 2 \u00b7 Attic", "Level 0", "Level -1"}));
  Texts levels;
  for (const XmlElement* level : root.ofClass("level")) {
    levels.push_back(level->attribute("data-level"));
  }
  EXPECT_EQ(levels, (Texts{"2", "0", "-1"}));
}

TEST(SceneSvg, ShowsOneLevelWhenAsked) {
  SceneSvgOptions options;
  options.level = -1;
  const XmlElement root = drawnSheet(house(), options);
  EXPECT_EQ(textsOf(root, "title"), Texts{"Level -1"});
}

TEST(SceneSvg, ShowsASingleLevelAsLargeAsItGets) {
  const auto metresOfBar = [](const XmlElement& root) {
    return std::stod(root.ofClass("scale").front()->attribute("data-metres"));
  };
  SceneSvgOptions options;
  options.level = 2;  // one point, while level 0 is 75 m long
  EXPECT_LT(metresOfBar(drawnSheet(house(), options)), metresOfBar(drawnSheet(house())));
}

TEST(SceneSvg, OfACampusGivesEachPlanAScaleBarOfItsOwn) {
  const auto room = [](int level) {
    return featureOf("room", "\"level\":" + std::to_string(level), "Polygon",
                     "[[[11,48],[11.001,48],[11.001,48.0005],[11,48.0005],[11,48]]]");
  };
  const XmlElement root = drawnSheet(makeScene(
      parsed({room(0), room(1), nodeAt(1, 0, 11.0005, 48.0002), nodeAt(2, 0, 11.02, 48.0002)})));
  EXPECT_EQ(textsOf(root, "title"), (Texts{"Level 1", "Level 0", "Level 0, its rooms enlarged"}));
  const auto bars = root.ofClass("scale");
  ASSERT_EQ(bars.size(), 3U);
  EXPECT_EQ(bars[0]->attribute("data-metres"), bars[2]->attribute("data-metres"));
  EXPECT_GE(std::stod(bars[1]->attribute("data-metres")), 50);
  EXPECT_LE(std::stod(bars[2]->attribute("data-metres")), 20);
}

TEST(SceneSvg, LaysTheSilhouetteOfOneLevelBelowTheOthers) {
  const XmlElement root =
      drawnSheet(makeScene(parsed({wallOf(0, "[[11,48],[11.001,48]]"), nodeAt(1, 1, 11, 48),
                                   nodeAt(2, 2, 11, 48), nodeAt(3, 0, 11, 48)})));
  EXPECT_EQ(root.named("use").size(), 2U);
  const auto defined = root.named("defs").front()->named("path");
  ASSERT_EQ(defined.size(), 1U);
  EXPECT_EQ(defined.front()->attribute("d"), root.ofClass("wall").front()->attribute("d"));
  EXPECT_EQ(textsOf(*root.ofClass("legend").front(), "note"), Texts{"Where level 0 lies"});
}

TEST(SceneSvg, RefusesALevelThatIsNotThere) {
  SceneSvgOptions options;
  options.level = 9;
  try {
    sceneSvg(house(), options);
    FAIL() << "nothing was thrown";
  } catch (const KorvaniTools::InputError& error) {
    EXPECT_STREQ(error.what(), "there is no level 9 to draw; expected one of -1, 0, 2");
  }
}

TEST(SceneSvg, SaysWhoMustBeNamed) {
  EXPECT_EQ(textsOf(drawnSheet(house()), "attribution"),
            Texts{"Map data: \u00a9 Mappers \u00b7 Licence: CC0"});
}

TEST(SceneSvg, HasALegendForWhatItShows) {
  const XmlElement root = drawnSheet(house());
  const Texts words = textsOf(*root.ofClass("legend").front(), "note");
  EXPECT_EQ(words, Texts{"Stairs"});
}

TEST(SceneSvg, HasALegendForAWalk) {
  Scene scene = house();
  scene.tracks.push_back({0, {{1, 1}}, {{1, 2}}, {}});
  const auto notes = [&] { return textsOf(*drawnSheet(scene).ofClass("legend").front(), "note"); };
  EXPECT_EQ(notes(), (Texts{"Stairs", "Position as measured", "Position on the map"}));
  scene.tracks[0].denied.push_back({{1, 1}, {}});
  EXPECT_EQ(notes().back(), "Jump that was denied");
}

TEST(SceneSvg, OfAnEmptyBuildingSaysSo) {
  const XmlElement root = drawnSheet(makeScene(Building{}));
  EXPECT_EQ(root.named("title").front()->text, "Floor plan");
  EXPECT_EQ(textsOf(root, "note"), Texts{"There is nothing to draw in this building."});
}

TEST(SceneSvg, DrawsABuildingOfOnePoint) {
  SceneSvgOptions options;
  options.graph = true;
  const XmlElement root = drawnSheet(makeScene(parsed({nodeAt(1, 0, 11, 48)})), options);
  EXPECT_EQ(root.ofClass("node").size(), 1U);
}

TEST(SceneSvg, DrawsABuildingAsWideAsTheEarth) {
  const XmlElement root =
      drawnSheet(makeScene(parsed({nodeAt(1, 0, -180, -90), nodeAt(2, 0, 180, 90), edgeOf(1, 2)})));
  EXPECT_LT(std::stod(root.attribute("width")), 4000);
  EXPECT_GT(std::stod(root.attribute("height")), 0);
}

TEST(SceneSvg, NeedsNothingFromOutside) {
  const std::string text = sceneSvg(house(), {});
  const XmlElement root = parsedXml(text);
  for (const XmlElement* element :
       root.all([](const XmlElement& each) { return each.attributes.count("href") > 0; })) {
    EXPECT_EQ(element->attribute("href"), "#ghost");
  }
  EXPECT_EQ(text.find("http", text.find("http://www.w3.org/2000/svg") + 4), std::string::npos);
  EXPECT_EQ(text.find("<script"), std::string::npos);
}

TEST(SceneSvg, HasEachIdOnce) {
  std::set<std::string> ids;
  const XmlElement root = drawnSheet(house());
  for (const XmlElement* element :
       root.all([](const XmlElement& each) { return each.attributes.count("id") > 0; })) {
    EXPECT_TRUE(ids.insert(element->attribute("id")).second);
  }
}

TEST(SceneSvg, EscapesNamesEverywhere) {
  const Scene scene = makeScene(parsed({nodeAt(1, 0, 11, 48)},
                                       R"("name":"<b>&\"","attribution":"<i>'","licence":"]]>",)"
                                       R"("levels":[{"level":0,"name":"</text><script>"}])"));
  const XmlElement root = drawnSheet(scene);
  EXPECT_EQ(root.named("title").front()->text, "<b>&\"");
  EXPECT_TRUE(root.named("script").empty());
  EXPECT_EQ(textsOf(root, "attribution"), Texts{"Map data: <i>' \u00b7 Licence: ]]>"});
}

TEST(SceneSvg, TellsTheWay) {
  Scene scene = house();
  KorvaniTools::DrawnRoute route;
  route.start = {0, {5, 5}, "Desk"};
  route.destination = {0, {40, 20}, "Door"};
  route.legs.push_back({0, {{5, 5}, {40, 20}}});
  route.distance = 38.2;
  route.travelTime = 26;
  route.instructions = {"go straight on for 20 m", "in 18 m you reach Door"};
  scene.route = route;
  const XmlElement root = drawnSheet(scene);
  const Texts notes = textsOf(root, "note");
  EXPECT_EQ(notes.at(0), "From Desk to Door: 38 m, about 26 s");
  EXPECT_EQ(notes.at(1), "1. go straight on for 20 m");
  EXPECT_EQ(notes.at(2), "2. in 18 m you reach Door");
  EXPECT_NE(root.named("desc").front()->text.find("in 18 m you reach Door"), std::string::npos);
}

TEST(SceneSvg, HasThemes) {
  SceneSvgOptions dark;
  dark.theme = DrawingTheme::dark;
  EXPECT_NE(sceneSvg(house(), dark), sceneSvg(house(), {}));
}

TEST(SceneSvg, IsTheSameForTheSameScene) {
  EXPECT_EQ(sceneSvg(house(), {}), sceneSvg(house(), {}));
}

TEST(SceneSvg, DrawsItsScaleBarAsLongAsItSays) {
  const Scene scene = house();
  const XmlElement root = drawnSheet(scene);
  const XmlElement& bar = *root.ofClass("scale").front();
  const std::string path = bar.named("path").front()->attribute("d");
  const double left = std::stod(path.substr(1));
  const double right = std::stod(path.substr(path.find('H') + 1));
  // The plan shows the whole frame.
  const XmlElement& panel = *root.ofClass("panel").front();
  const double scale = std::stod(panel.attribute("width")) / scene.frame.width();
  EXPECT_NEAR((right - left) / scale, std::stod(bar.attribute("data-metres")), 0.05);
}

TEST(ScaleBar, IsOneTwoOrFive) {
  EXPECT_EQ(scaleBarFor(10, 140).metres, 10);
  EXPECT_EQ(scaleBarFor(5, 140).metres, 20);
  EXPECT_EQ(scaleBarFor(2, 140).metres, 50);
  EXPECT_EQ(scaleBarFor(1.4, 140).metres, 100);
  EXPECT_EQ(scaleBarFor(60, 140).words, "2 m");
}

TEST(ScaleBar, FitsAndIsAsLongAsItSays) {
  for (double scale = 1e-6; scale < 1e5; scale *= 1.7) {
    const ScaleBar bar = scaleBarFor(scale, 140);
    EXPECT_LE(bar.pixels, 140 * (1 + 1e-12));
    EXPECT_GT(bar.pixels, 140 / 2.51);
    EXPECT_DOUBLE_EQ(bar.pixels, bar.metres * scale);
  }
}

TEST(ScaleBar, UsesTheUnitThatSuits) {
  EXPECT_EQ(scaleBarFor(0.01, 140).words, "10 km");
  EXPECT_EQ(scaleBarFor(0.2, 140).words, "500 m");
  EXPECT_EQ(scaleBarFor(400, 140).words, "20 cm");
  EXPECT_EQ(scaleBarFor(40000, 140).words, "2 mm");
}

TEST(NorthArrow, PointsUp) {
  const XmlElement arrow = parsedXml(KorvaniTools::northArrowSvg());
  EXPECT_TRUE(arrow.hasClass("north"));
  EXPECT_EQ(arrow.ofClass("needle").front()->attribute("d").rfind("M14 0", 0), 0U);
  EXPECT_EQ(arrow.named("text").front()->text, "N");
}

}  // namespace
}  // namespace KorvaniTest
