#include "Drawing/LevelSvg.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "Building/BuildingReader.hpp"
#include "Drawing/LevelLabels.hpp"
#include "Support/Maps.hpp"
#include "Tools/BuildingText.hpp"
#include "Tools/Drawing/XmlTree.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using KorvaniTools::fittingScale;
using KorvaniTools::LevelLabel;
using KorvaniTools::levelLabels;
using KorvaniTools::levelSvg;
using KorvaniTools::LevelSvgOptions;
using KorvaniTools::makeScene;
using KorvaniTools::PixelBox;
using KorvaniTools::Scene;
using KorvaniTools::SceneLevel;

/// A hall with a shop, a lift, an entrance and a line of three nodes.
Scene hall() {
  return makeScene(
      parsed({featureOf("room", R"("level":0,"category":"shop","name":"Books")", "Polygon",
                        "[[[11,48],[11.0003,48],[11.0003,48.0002],[11,48.0002],[11,48]]]"),
              wallOf(0, "[[11,48],[11.0003,48]]"), nodeAt(1, 0, 11.0001, 48.0001),
              nodeAt(2, 0, 11.0002, 48.0001), nodeAt(3, 1, 11.0002, 48.0001),
              edgeOf(1, 2, R"("distance":7.25,"oneway":true,"type":"ramp","barrierFree":false)"),
              edgeOf(2, 3, R"("type":"elevator")"),
              placeAt("Front door", 0, 11.00015, 48.00001, "\"entrance\":true"),
              placeAt("Desk", 0, 11.0001, 48.00015, R"("category":"information")")}));
}

XmlElement drawn(const Scene& scene, const LevelSvgOptions& options = {}) {
  return parsedXml(levelSvg(scene, scene.levels.front(), options));
}

const XmlElement& only(const std::vector<const XmlElement*>& elements) {
  EXPECT_EQ(elements.size(), 1U);
  static const XmlElement kNone;
  return elements.empty() ? kNone : *elements.front();
}

TEST(LevelSvg, DrawsTheLevelBelowOneGroup) {
  const XmlElement level = drawn(hall());
  EXPECT_EQ(level.name, "g");
  EXPECT_TRUE(level.hasClass("level"));
  EXPECT_EQ(level.attribute("data-level"), "0");
}

TEST(LevelSvg, SaysWhatRoomsPlacesAndConnectionsAre) {
  const XmlElement level = drawn(hall());
  const XmlElement& room = only(level.ofClass("room"));
  EXPECT_TRUE(room.hasClass("shop"));
  EXPECT_EQ(room.attribute("data-name"), "Books");
  EXPECT_EQ(only(level.ofClass("entrance")).attribute("data-place"), "Front door");
  EXPECT_EQ(only(level.ofClass("service")).attribute("data-kind"), "information");
  const XmlElement& lift = only(level.ofClass("connection"));
  EXPECT_TRUE(lift.hasClass("elevator"));
  EXPECT_EQ(lift.attribute("data-node"), "2");
  EXPECT_EQ(lift.attribute("data-levels"), "1");
}

TEST(LevelSvg, ShowsWhatWallsEncloseAndTheWaysOutsideWhereThereAreNoRooms) {
  const XmlElement root = drawn(makeScene(
      parsed({wallOf(0, "[[11,48],[11.0003,48],[11.0003,48.0002],[11,48.0002],[11,48]]"),
              nodeAt(1, 0, 11.0001, 48.0001), nodeAt(2, 0, 11.0009, 48.0001), edgeOf(1, 2)})));
  EXPECT_EQ(root.ofClass("enclosed").size(), 1U);
  EXPECT_EQ(root.ofClass("way").size(), 2U);
}

TEST(LevelSvg, OfALevelWithRoomsTheWallsMakeNoFloor) {
  EXPECT_TRUE(drawn(hall()).ofClass("enclosed").empty());
}

TEST(LevelSvg, NamesAPlaceOnceNearby) {
  const XmlElement root = drawn(makeScene(
      parsed({placeAt("Ticket machine", 0, 11, 48), placeAt("Ticket machine", 0, 11.00008, 48),
              placeAt("Ticket machine", 0, 11.0009, 48)})));
  EXPECT_EQ(root.ofClass("place").size(), 3U);
  EXPECT_EQ(root.ofClass("label").size(), 2U);
}

TEST(LevelSvg, DrawsTheGraphOnlyWhenAsked) {
  LevelSvgOptions options;
  EXPECT_TRUE(drawn(hall(), options).ofClass("edge").empty());
  options.graph = true;
  const XmlElement level = drawn(hall(), options);
  EXPECT_EQ(level.ofClass("node").size(), 2U);
  const XmlElement& edge = only(level.ofClass("edge"));
  EXPECT_EQ(edge.attribute("data-edge"), "1-2");
  EXPECT_EQ(edge.attribute("data-distance"), "7.25");
  EXPECT_EQ(edge.attribute("data-kind"), "ramp");
  EXPECT_EQ(edge.attribute("data-oneway"), "yes");
  EXPECT_EQ(edge.attribute("data-barrier-free"), "no");
}

TEST(LevelSvg, DrawsMetresAtItsScale) {
  LevelSvgOptions options;
  options.graph = true;
  options.pixelsPerMetre = 4;
  const Scene scene = hall();
  const XmlElement level = drawn(scene, options);
  const XmlElement& edge = only(level.ofClass("edge"));
  const auto& shape = scene.levels.front().edges.front();
  EXPECT_NEAR(std::stod(edge.attribute("x1")), shape.start.x * 4, 0.006);
  EXPECT_NEAR(std::stod(edge.attribute("y2")), shape.end.y * 4, 0.006);
}

TEST(LevelSvg, NamesARoomAndThePlaceInItOnce) {
  const Scene scene = makeScene(
      parsed({featureOf("room", R"("level":0,"name":"Books")", "Polygon",
                        "[[[11,48],[11.0003,48],[11.0003,48.0002],[11,48.0002],[11,48]]]"),
              placeAt("Books", 0, 11.0001, 48.0001)}));
  EXPECT_EQ(drawn(scene).ofClass("label").size(), 1U);
}

TEST(LevelSvg, MarksToiletsWithoutAName) {
  const Scene scene = makeScene(
      parsed({featureOf("room", R"("level":0,"category":"toilets")", "Polygon",
                        "[[[11,48],[11.0003,48],[11.0003,48.0002],[11,48.0002],[11,48]]]")}));
  EXPECT_EQ(only(only(drawn(scene).ofClass("label")).named("text")).text, "WC");
}

TEST(LevelSvg, KeepsHostileNamesText) {
  const std::string name = R"(\"><script>alert(1)</script>&amp;<g onload='x'>)";
  const Scene scene = makeScene(
      parsed({placeAt(name, 0, 11, 48, R"("category":"\"/><x>")"), nodeAt(1, 0, 11.001, 48.001),
              featureOf("room", R"("level":0,"name":")" + name + '"', "Polygon",
                        "[[[11,48],[11.003,48],[11.003,48.002],[11,48]]]")}));
  const XmlElement level = drawn(scene);
  EXPECT_TRUE(level.named("script").empty());
  EXPECT_TRUE(level.named("x").empty());
  EXPECT_TRUE(
      level.all([](const XmlElement& element) { return element.attributes.count("onload") > 0; })
          .empty());
  EXPECT_EQ(only(level.ofClass("place")).attribute("data-place"),
            R"("><script>alert(1)</script>&amp;<g onload='x'>)");
}

/// A route east along a hall, up, and on.
Scene hallWithRoute() {
  Scene scene = hall();
  KorvaniTools::DrawnRoute route;
  route.legs.push_back({0, {{5, 10}, {15, 10}, {15, 20}}});
  route.legs.push_back({1, {{16, 20}, {20, 20}}});
  route.arrows.push_back({0, {15, 11}, 180, "right", "turn right"});
  KorvaniTools::RouteChange change;
  change.to = 1;
  change.leaves = {15, 20};
  change.arrives = {16, 20};
  change.symbol = KorvaniTools::ConnectionSymbol::escalator;
  change.toName = "to level 1";
  change.fromName = "from level 0";
  route.changes.push_back(change);
  route.start = {0, {5, 10}, "Here"};
  route.destination = {1, {20, 20}, "There"};
  scene.route = route;
  return scene;
}

TEST(LevelSvg, DrawsTheRouteInItsDirection) {
  const XmlElement level = drawn(hallWithRoute());
  EXPECT_EQ(only(level.ofClass("line")).attribute("d"), "M50 100L150 100L150 200");
  EXPECT_EQ(level.ofClass("route").size(), 2U);  // casing and line
  // Two chevrons point to the east and down to the south, as degrees turned clockwise from east.
  std::vector<std::string> turns;
  for (const XmlElement* chevron : level.ofClass("chevron")) {
    turns.push_back(only(chevron->named("path")).attribute("transform"));
  }
  ASSERT_FALSE(turns.empty());
  EXPECT_EQ(turns.front(), "rotate(0)");
  EXPECT_EQ(turns.back(), "rotate(90)");
}

TEST(LevelSvg, DrawsInstructionsChangesAndEnds) {
  const Scene scene = hallWithRoute();
  const XmlElement level = drawn(scene);
  const XmlElement& arrow = only(level.ofClass("arrow"));
  EXPECT_EQ(arrow.attribute("transform"), "translate(150 110)");
  EXPECT_EQ(arrow.attribute("data-text"), "turn right");
  EXPECT_EQ(only(arrow.ofClass("dart")).attribute("transform"), "rotate(180)");
  const XmlElement& change = only(level.ofClass("change"));
  EXPECT_TRUE(change.hasClass("escalator"));
  EXPECT_EQ(change.attribute("data-to"), "1");
  EXPECT_EQ(only(only(level.ofClass("badge")).named("text")).text, "to level 1");
  EXPECT_EQ(only(level.ofClass("start")).attribute("data-place"), "Here");
  EXPECT_TRUE(level.ofClass("destination").empty());
  const XmlElement above = parsedXml(levelSvg(scene, scene.levels.back(), {}));
  EXPECT_EQ(only(above.ofClass("destination")).attribute("data-place"), "There");
  EXPECT_EQ(only(only(above.ofClass("badge")).named("text")).text, "from level 0");
}

TEST(LevelSvg, MarksAnArrivalWithItsKind) {
  Scene scene = hallWithRoute();
  scene.route->arrows.push_back(
      {1, {16, 20}, 0, "levelUp", "go up", KorvaniTools::ConnectionSymbol::escalator});
  const XmlElement above = parsedXml(levelSvg(scene, scene.levels.back(), {}));
  const XmlElement& arrow = only(above.ofClass("arrow"));
  EXPECT_TRUE(arrow.hasClass("escalator"));
  const std::string glyph = only(only(above.ofClass("connection")).ofClass("solid")).attribute("d");
  EXPECT_NE(only(arrow.ofClass("solid")).attribute("d"), glyph) << "a lift is there, not taken";
  EXPECT_EQ(arrow.ofClass("glyph").size(), 2U);
  EXPECT_TRUE(above.ofClass("arrival").empty()) << "one mark is enough";
}

TEST(LevelSvg, ShowsStartAndDiscOfARouteThatBeginsWithAChange) {
  Scene scene = hallWithRoute();
  KorvaniTools::DrawnRoute& route = *scene.route;
  route.legs.erase(route.legs.begin());
  route.arrows.clear();
  route.start.at = route.changes.front().leaves;
  const XmlElement level = drawn(scene);
  EXPECT_EQ(only(only(level.ofClass("end")).named("text")).text, "Here");
  EXPECT_EQ(only(only(level.ofClass("badge")).named("text")).text, "to level 1");
  const auto radiusOf = [](const XmlElement& circle) { return std::stod(circle.attribute("r")); };
  const XmlElement& ring = *only(level.ofClass("start")).named("circle").back();
  EXPECT_GT(radiusOf(ring), radiusOf(only(level.ofClass("disc"))) + 2);
}

TEST(LevelSvg, NamesAnEntranceAtTheTopOfStairs) {
  const Scene scene =
      makeScene(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, -1, 11, 48), nodeAt(3, 0, 11.0004, 48.0001),
                        edgeOf(1, 2, R"("type":"stairs")"), edgeOf(1, 3),
                        placeAt("Exit A", 0, 11, 48, "\"entrance\":true")}));
  const XmlElement level = parsedXml(levelSvg(scene, scene.levels.back(), {}));
  EXPECT_EQ(level.ofClass("connection").size(), 1U);
  EXPECT_EQ(only(only(level.ofClass("label")).named("text")).text, "Exit A");
}

TEST(LevelSvg, DrawsAnArrowBesideTheDiscThatItBeginsAt) {
  Scene scene = hallWithRoute();
  scene.route->arrows = {{1, {16, 20}, 90, "forward", "go straight on"}};
  const XmlElement above = parsedXml(levelSvg(scene, scene.levels.back(), {}));
  const XmlElement& arrow = only(above.ofClass("arrow"));
  EXPECT_EQ(arrow.attribute("transform"), "translate(160 200)") << "its place is the engine's";
  EXPECT_EQ(only(arrow.ofClass("dart")).attribute("transform"), "rotate(90) translate(0 -29)");
}

TEST(LevelSvg, DrawsPositionsAndDeniedJumps) {
  Scene scene = hall();
  KorvaniTools::SceneTrack track;
  track.measured = {{1, 2}, {3, 2}};
  track.snapped = {{1, 3}};
  track.denied = {{{3, 8}, KorvaniTools::ScenePoint{3, 2}}, {{4, 9}, {}}};
  scene.tracks.push_back(track);
  const XmlElement level = drawn(scene);
  EXPECT_EQ(level.ofClass("measured").size(), 2U);
  EXPECT_EQ(level.ofClass("snapped").size(), 1U);
  EXPECT_EQ(level.ofClass("denied").size(), 2U);
  EXPECT_EQ(only(level.ofClass("jump")).attribute("d"), "M30 20L30 80");
}

TEST(LevelSvg, BearsARouteThatComesFromFarAway) {
  Scene scene = hallWithRoute();
  scene.route->legs.front().line.front() = {-2e7, 1e7};
  scene.route->start.at = {-2e7, 1e7};
  EXPECT_LT(levelSvg(scene, scene.levels.front(), {}).size(), 300000U);
}

TEST(LevelSvg, LeavesTheRouteOutWhenAsked) {
  LevelSvgOptions options;
  options.route = false;
  const XmlElement level = drawn(hallWithRoute(), options);
  EXPECT_TRUE(level.ofClass("route").empty());
  EXPECT_TRUE(level.ofClass("start").empty());
}

TEST(LevelSvg, MarksConnectionsOnTopOfEachOtherOnlyWhenMagnified) {
  const Scene scene =
      makeScene(parsed({nodeAt(1, 0, 11, 48), nodeAt(2, 1, 11, 48), nodeAt(3, 0, 11.00001, 48),
                        nodeAt(4, 1, 11.00001, 48), nodeAt(5, 0, 11.01, 48.01),
                        edgeOf(1, 2, R"("type":"stairs")"), edgeOf(3, 4, R"("type":"elevator")")}));
  LevelSvgOptions options;
  options.pixelsPerMetre = 2;
  EXPECT_EQ(drawn(scene, options).ofClass("connection").size(), 1U);
  options.labelZooms = {1, 4, 32};
  const auto connections = drawn(scene, options).ofClass("connection");
  EXPECT_EQ(drawn(scene, options).ofClass("connection").size(), 2U);
}

TEST(LevelSvg, IsTheSameForTheSameScene) {
  const Scene scene = hallWithRoute();
  EXPECT_EQ(levelSvg(scene, scene.levels.front(), {}), levelSvg(scene, scene.levels.front(), {}));
}

TEST(FittingScale, FillsThePixelsButDoesNotBlowUpSmallBuildings) {
  const Scene scene = hall();
  const double longer = std::max(scene.frame.width(), scene.frame.height());
  EXPECT_DOUBLE_EQ(fittingScale(scene, 500) * longer, 500);
  EXPECT_EQ(fittingScale(makeScene(parsed({nodeAt(1, 0, 11, 48)})), 5000), 60);
}

TEST(LevelLabels, WriteTheDestinationBesideTheRouteWhereThereIsRoom) {
  Scene scene = hallWithRoute();
  scene.route->destination = {0, {15, 10}, "There"};
  scene.route->legs = {{0, {{5, 5}, {15, 10}, {25, 10}}}};
  scene.route->changes.clear();
  scene.route->arrows.clear();
  for (const LevelLabel& label : levelLabels(scene, scene.levels.front(), {})) {
    if (label.lines.front() != "There") continue;
    for (int x = -100; x <= 100; ++x) {
      const double y = std::min(0.0, x * 0.5);
      const PixelBox spot{x - 4.0, y - 4.0, x + 4.0, y + 4.0};
      ASSERT_FALSE(label.box.overlaps(spot)) << x;
    }
    const PixelBox pin{-11, -30, 11, 2};
    EXPECT_FALSE(label.box.overlaps(pin));
    return;
  }
  FAIL() << "the destination has no name";
}

/// The labels' boxes on the paper at that magnification.
std::vector<PixelBox> boxesOf(const std::vector<LevelLabel>& labels, double zoom) {
  std::vector<PixelBox> boxes;
  for (const LevelLabel& label : labels) {
    if (label.zoom > zoom) continue;
    boxes.push_back({label.at.x * zoom + label.box.left, label.at.y * zoom + label.box.top,
                     label.at.x * zoom + label.box.right, label.at.y * zoom + label.box.bottom});
  }
  return boxes;
}

void expectNoOverlap(const Scene& scene, double width) {
  LevelSvgOptions options;
  options.pixelsPerMetre = fittingScale(scene, width);
  options.labelZooms = {1, 2, 4};
  for (const SceneLevel& level : scene.levels) {
    SCOPED_TRACE(level.title);
    const std::vector<LevelLabel> labels = levelLabels(scene, level, options);
    for (const double zoom : {1.0, 2.0, 3.3, 4.0}) {
      const std::vector<PixelBox> boxes = boxesOf(labels, zoom);
      for (std::size_t i = 0; i < boxes.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) ASSERT_FALSE(boxes[i].overlaps(boxes[j]));
      }
    }
  }
}

TEST(LevelLabels, DoNotOverlapInRandomBuildings) {
  for (unsigned seed = 0; seed < 12; ++seed) {
    std::mt19937 random(seed);
    Building building;
    for (int i = 0; i < 150; ++i) {
      KorvaniTools::Place place;
      place.name = "Place number " + std::to_string(random() % 5000);
      place.coordinate = {48 + static_cast<double>(random() % 1000) * 1e-6,
                          11 + static_cast<double>(random() % 1000) * 1e-6};
      place.entrance = random() % 10 == 0;
      building.places.push_back(place);
    }
    expectNoOverlap(makeScene(building), 700);
  }
}

TEST(LevelLabels, DoNotOverlapInTheExampleBuilding) {
  const Scene scene = makeScene(KorvaniTools::readBuilding(
      std::string(KORVANI_SOURCE_DIR) + "/Examples/Buildings/terminal.building.geojson"));
  expectNoOverlap(scene, 900);
  expectNoOverlap(scene, 2000);
}

TEST(LevelLabels, DoNotOverlapInRealBuildings) {
  SKIP_WITHOUT_MAPS();
  for (const char* file :
       {"cch-32c3-graph/cch.building.geojson", "spb-polytech-imdf/spb.building.geojson"}) {
    SCOPED_TRACE(file);
    expectNoOverlap(makeScene(KorvaniTools::readBuilding(mapFile(file))), 1200);
  }
}

TEST(LevelLabels, NameMostPlacesOfTheExampleBuilding) {
  const Scene scene = makeScene(KorvaniTools::readBuilding(
      std::string(KORVANI_SOURCE_DIR) + "/Examples/Buildings/terminal.building.geojson"));
  LevelSvgOptions options;
  options.pixelsPerMetre = fittingScale(scene, 1800);
  std::size_t places = 0;
  std::size_t labels = 0;
  for (const SceneLevel& level : scene.levels) {
    places += level.places.size();
    for (const LevelLabel& label : levelLabels(scene, level, options)) {
      if (label.kind == KorvaniTools::LabelKind::place) ++labels;
    }
  }
  EXPECT_GT(labels, places * 8 / 10);
}

}  // namespace
}  // namespace KorvaniTest
