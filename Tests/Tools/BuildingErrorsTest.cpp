#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

#include "Building/BuildingReader.hpp"
#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::BuildingError;
using KorvaniTools::parseBuilding;
using KorvaniTools::readBuilding;
using testing::HasSubstr;

constexpr auto kFile = "test.building.geojson";
const std::string kNode = nodeAt(1, 0, 11, 48);

/// The error that reading `text` gives.
std::optional<BuildingError> errorIn(const std::string& text) {
  try {
    parseBuilding(text, kFile);
  } catch (const BuildingError& error) {
    return error;
  }
  return {};
}

void expectError(const std::string& text, std::optional<std::size_t> feature,
                 const std::string& subject, const std::string& found,
                 const std::string& expected) {
  const auto error = errorIn(text);
  ASSERT_TRUE(error) << "nothing was found wrong with " << text;
  EXPECT_EQ(error->file(), kFile);
  EXPECT_EQ(error->feature(), feature) << error->what();
  EXPECT_EQ(error->subject(), subject) << error->what();
  EXPECT_THAT(error->found(), HasSubstr(found));
  EXPECT_THAT(error->expected(), HasSubstr(expected));
}

/// `feature`, which stands second in its file, is wrong.
void expectFeatureError(const std::string& feature, const std::string& subject,
                        const std::string& found, const std::string& expected) {
  expectError(buildingText({kNode, feature}), 1, subject, found, expected);
}

TEST(BuildingErrors, SayFileFeatureFoundAndExpectedOnOneLine) {
  const auto error = errorIn(buildingText({nodeAt(1, 0, 11, 48), nodeAt(2, 5000, 11, 48)}));
  ASSERT_TRUE(error);
  EXPECT_STREQ(error->what(),
               "test.building.geojson: features[1]: level of a node: found 5000, expected an "
               "integer from -1000 to 1000");
}

TEST(BuildingErrors, AFileThatIsNotThereIsNamedWithTheReason) {
  try {
    readBuilding("no/such/file.building.geojson");
    FAIL() << "it was read";
  } catch (const BuildingError& error) {
    EXPECT_EQ(error.file(), "no/such/file.building.geojson");
    EXPECT_FALSE(error.feature());
    EXPECT_THAT(error.found(), HasSubstr("No such file"));
  }
}

TEST(BuildingErrors, AFolderIsNoBuilding) {
  try {
    readBuilding(std::filesystem::temp_directory_path());
    FAIL() << "it was read";
  } catch (const BuildingError& error) {
    EXPECT_EQ(error.found(), "a folder");
  }
}

TEST(BuildingErrors, TextThatIsNotJson) {
  expectError("", {}, "", "unexpected end of input", "JSON");
  expectError("<xml/>", {}, "", "line 1, column 1", "JSON");
  expectError(R"({"type":"FeatureCollection")", {}, "", "unexpected end of input", "JSON");
}

TEST(BuildingErrors, JsonThatBreaksOffInAFeatureNamesTheFeature) {
  std::string text = buildingText({kNode, nodeAt(2, 0, 11, 48), nodeAt(3, 0, 11, 48)});
  text.replace(text.rfind("Point"), 5, "Po\nnt");
  expectError(text, 2, "", "parse error", "JSON");
}

TEST(BuildingErrors, JsonThatBreaksOffAfterTheFeaturesNamesNone) {
  expectError(R"({"features":[{},{}],"type":oops})", {}, "", "parse error", "JSON");
}

TEST(BuildingErrors, NotANumberIsNotJson) {
  expectFeatureError(featureOf("node", R"("id":2,"level":0)", "Point", "[NaN,48]"), "",
                     "parse error", "JSON");
}

TEST(BuildingErrors, BytesThatAreNotUtf8AreNotJson) {
  expectFeatureError(featureOf("place", "\"name\":\"\xff\",\"level\":0", "Point", "[11,48]"), "",
                     "parse error", "JSON");
}

TEST(BuildingErrors, ANumberBeyondEveryDoubleIsNotFinite) {
  expectFeatureError(featureOf("node", R"("id":2,"level":0)", "Point", "[1e999,48]"), "", "1e999",
                     "finite");
  expectFeatureError(edgeOf(1, 1, "\"distance\":1e999"), "", "1e999", "finite");
  expectFeatureError(edgeOf(1, 1, "\"multiplicator\":-1e999"), "", "-1e999", "finite");
}

TEST(BuildingErrors, WhatIsNotAFeatureCollection) {
  expectError("[]", {}, "", "[]", "a FeatureCollection");
  expectError("17", {}, "", "17", "a FeatureCollection");
  expectError("{}", {}, "", "without a type", "a FeatureCollection");
  expectError(R"({"type":"Feature"})", {}, "type", "\"Feature\"", "FeatureCollection");
  expectError(R"({"type":"FeatureCollection"})", {}, "features", "nothing", "an array");
  expectError(R"({"type":"FeatureCollection","features":{}})", {}, "features", "an object",
              "an array");
}

TEST(BuildingErrors, IllTypedMembersOfTheFile) {
  expectError(buildingText({}, "\"name\":7"), {}, "name of the building", "7", "a string");
  expectError(buildingText({}, "\"attribution\":[1]"), {}, "attribution of the building", "[1]",
              "a string");
  expectError(buildingText({}, "\"licence\":true"), {}, "licence of the building", "true",
              "a string");
  expectError(buildingText({}, "\"levels\":{}"), {}, "levels", "an object", "an array");
  expectError(buildingText({}, "\"levels\":[1]"), {}, "levels[0]", "1", "an object");
  expectError(buildingText({}, R"("levels":[{"level":0},{"name":"A"}])"), {}, "level of levels[1]",
              "nothing", "an integer");
  expectError(buildingText({}, R"("levels":[{"level":0,"name":5}])"), {}, "name of levels[0]", "5",
              "a string");
}

TEST(BuildingErrors, AnyFormatVersionButOne) {
  expectError(buildingText({}, "\"formatVersion\":2"), {}, "formatVersion", "2", "1");
  expectError(buildingText({}, "\"formatVersion\":1.5"), {}, "formatVersion", "1.5", "1");
  expectError(buildingText({}, R"("formatVersion":"1")"), {}, "formatVersion", "\"1\"", "1");
  EXPECT_FALSE(errorIn(buildingText({}, "\"formatVersion\":1.0")));
  EXPECT_FALSE(errorIn(buildingText({}, "\"formatVersion\":null")));
}

TEST(BuildingErrors, WhatIsNotAFeature) {
  expectFeatureError("5", "", "5", "a Feature");
  expectFeatureError("{}", "type", "nothing", "\"Feature\"");
  expectFeatureError(R"({"type":"Point"})", "type", "\"Point\"", "\"Feature\"");
  expectFeatureError(R"({"type":"Feature","properties":[]})", "properties", "[]", "an object");
}

TEST(BuildingErrors, AFeatureWithoutKind) {
  expectFeatureError(R"({"type":"Feature"})", "kind of a feature", "nothing", "a string");
  expectFeatureError(R"({"type":"Feature","properties":null})", "kind of a feature", "nothing",
                     "a string");
  expectFeatureError(R"({"type":"Feature","properties":{"kind":3}})", "kind of a feature", "3",
                     "a string");
}

TEST(BuildingErrors, AGeometryOfTheWrongType) {
  const struct {
    const char* kind;
    const char* wrong;
    const char* expected;
  } cases[] = {
      {"region", "MultiPolygon", "a Polygon"}, {"node", "LineString", "a Point"},
      {"edge", "Point", "a LineString"},       {"obstacle", "Point", "a LineString or a Polygon"},
      {"place", "Polygon", "a Point"},         {"room", "LineString", "a Polygon"},
  };
  for (const auto& each : cases) {
    const auto error = errorIn(buildingText({kNode, featureOf(each.kind, "", each.wrong, "[]")}));
    ASSERT_TRUE(error) << each.kind;
    EXPECT_EQ(error->feature(), 1U) << each.kind;
    EXPECT_THAT(error->found(), HasSubstr(each.wrong));
    EXPECT_EQ(error->expected(), each.expected);
  }
}

TEST(BuildingErrors, AMissingGeometry) {
  const std::string start = R"({"type":"Feature","properties":{"kind":"node","id":2,"level":0})";
  expectFeatureError(start + "}", "geometry of a node", "nothing", "a Point");
  expectFeatureError(start + ",\"geometry\":null}", "geometry of a node", "nothing", "a Point");
  expectFeatureError(start + ",\"geometry\":{}}", "geometry of a node", "without a type",
                     "a Point");
  expectFeatureError(start + R"(,"geometry":{"type":"Point"}})", "geometry of a node", "nothing",
                     "coordinates");
}

TEST(BuildingErrors, APositionOutsideTheEarth) {
  for (const char* position : {"[180.5,48]", "[-180.5,48]", "[11,90.5]", "[11,-91]", "[48,1100]"}) {
    expectFeatureError(featureOf("node", R"("id":2,"level":0)", "Point", position),
                       "geometry of a node", position, "latitude from -90 to 90");
  }
  EXPECT_FALSE(errorIn(buildingText({nodeAt(1, 0, 180, 90), nodeAt(2, 0, -180, -90)})));
}

TEST(BuildingErrors, APositionOutsideTheEarthInAnyKindOfFeature) {
  const struct {
    const char* kind;
    const char* type;
    const char* coordinates;
  } cases[] = {{"region", "Polygon", "[[[11,48],[11,95]]]"},
               {"edge", "LineString", "[[11,48],[200,48]]"},
               {"obstacle", "LineString", "[[11,48],[11,-95]]"},
               {"place", "Point", "[11,95]"},
               {"room", "Polygon", "[[[11,95]]]"}};
  for (const auto& each : cases) {
    const auto error =
        errorIn(buildingText({kNode, featureOf(each.kind, "", each.type, each.coordinates)}));
    ASSERT_TRUE(error) << each.kind;
    EXPECT_EQ(error->feature(), 1U);
    EXPECT_THAT(error->expected(), HasSubstr("longitude from -180 to 180"));
  }
}

TEST(BuildingErrors, APositionThatIsNone) {
  for (const char* position : {"[11]", "[]", "{}", "null", "[\"11\",48]", "[null,48]", "5"}) {
    expectFeatureError(featureOf("node", R"("id":2,"level":0)", "Point", position),
                       "geometry of a node", "", "a position");
  }
  expectFeatureError(featureOf("obstacle", "\"level\":0", "LineString", "7"),
                     "geometry of an obstacle", "7", "an array of positions");
  expectFeatureError(featureOf("obstacle", "\"level\":0", "Polygon", "7"),
                     "geometry of an obstacle", "7", "an array of rings");
}

TEST(BuildingErrors, AMissingRequiredProperty) {
  expectFeatureError(featureOf("region", "", "Polygon", "[[[11,48]]]"), "level of a region",
                     "nothing", "an integer");
  expectFeatureError(featureOf("node", "\"level\":0", "Point", "[11,48]"), "id of a node",
                     "nothing", "an integer");
  expectFeatureError(featureOf("node", "\"id\":2", "Point", "[11,48]"), "level of a node",
                     "nothing", "an integer");
  expectFeatureError(featureOf("edge", "\"to\":1", "LineString", "[[0,0],[0,0]]"),
                     "from of an edge", "nothing", "an integer");
  expectFeatureError(featureOf("edge", "\"from\":1", "LineString", "[[0,0],[0,0]]"),
                     "to of an edge", "nothing", "an integer");
  expectFeatureError(featureOf("obstacle", "", "LineString", "[[0,0],[0,0]]"),
                     "level of an obstacle", "nothing", "an integer");
  expectFeatureError(featureOf("place", "\"level\":0", "Point", "[11,48]"), "name of a place",
                     "nothing", "a string");
  expectFeatureError(featureOf("place", R"("name":"Desk")", "Point", "[11,48]"), "level of a place",
                     "nothing", "an integer");
  expectFeatureError(featureOf("room", "", "Polygon", "[[[11,48]]]"), "level of a room", "nothing",
                     "an integer");
}

TEST(BuildingErrors, NullCountsAsMissing) {
  expectFeatureError(featureOf("node", R"("id":null,"level":0)", "Point", "[11,48]"),
                     "id of a node", "nothing", "an integer");
}

TEST(BuildingErrors, AnIllTypedProperty) {
  expectFeatureError(nodeAt(2, 0, 11, 48, "\"region\":4"), "region of a node", "4", "a string");
  expectFeatureError(featureOf("node", R"("id":"2","level":0)", "Point", "[11,48]"), "id of a node",
                     "\"2\"", "an integer");
  expectFeatureError(featureOf("node", R"("id":2.5,"level":0)", "Point", "[11,48]"), "id of a node",
                     "2.5", "an integer");
  expectFeatureError(edgeOf(1, 1, "\"oneway\":1"), "oneway of an edge", "1", "true or false");
  expectFeatureError(edgeOf(1, 1, R"("barrierFree":"yes")"), "barrierFree of an edge", "\"yes\"",
                     "true or false");
  expectFeatureError(edgeOf(1, 1, "\"type\":[]"), "type of an edge", "[]", "a string");
  expectFeatureError(edgeOf(1, 1, R"("distance":"5")"), "distance of an edge", "\"5\"",
                     "metres above 0");
  expectFeatureError(edgeOf(1, 1, "\"multiplicator\":true"), "multiplicator of an edge", "true",
                     "above 0");
  expectFeatureError(wallOf(0, "[[11,48]]", "\"strength\":1.5"), "strength of an obstacle", "1.5",
                     "an integer");
  expectFeatureError(wallOf(0, "[[11,48]]", "\"region\":{}"), "region of an obstacle", "an object",
                     "a string");
  expectFeatureError(regionOf(0, 10, 47, 12, 49, "\"name\":1"), "name of a region", "1",
                     "a string");
  expectFeatureError(placeAt("Desk", 0, 11, 48, "\"entrance\":0"), "entrance of a place", "0",
                     "true or false");
  expectFeatureError(featureOf("place", R"("name":1,"level":0)", "Point", "[11,48]"),
                     "name of a place", "1", "a string");
  expectFeatureError(featureOf("room", R"("level":0,"name":1)", "Polygon", "[[[11,48]]]"),
                     "name of a room", "1", "a string");
  expectFeatureError(featureOf("room", R"("level":0,"category":1)", "Polygon", "[[[11,48]]]"),
                     "category of a room", "1", "a string");
}

TEST(BuildingErrors, ALevelThatIsNotWholeOrTooFarUpOrDown) {
  for (const char* level : {"1001", "-1001", "0.5", "1e300", "\"1\"", "18446744073709551615"}) {
    expectFeatureError(
        featureOf("node", R"("id":2,"level":)" + std::string(level), "Point", "[11,48]"),
        "level of a node", "", "an integer from -1000 to 1000");
  }
  EXPECT_FALSE(errorIn(buildingText({nodeAt(1, 1000, 11, 48), nodeAt(2, -1000, 11, 48)})));
}

TEST(BuildingErrors, ANegativeNodeId) {
  expectFeatureError(nodeAt(-1, 0, 11, 48), "id of a node", "-1", "an integer from 0 on");
}

TEST(BuildingErrors, ANodeIdThat64BitsDoNotHold) {
  expectFeatureError(featureOf("node", R"("id":9223372036854775808,"level":0)", "Point", "[11,48]"),
                     "id of a node", "9223372036854775808", "an integer");
}

TEST(BuildingErrors, ADuplicateNodeId) {
  expectError(buildingText({nodeAt(7, 0, 11, 48), nodeAt(8, 0, 11, 48), nodeAt(7, 1, 11, 48)}), 2,
              "id of a node", "7 a second time", "of its own");
}

TEST(BuildingErrors, ADuplicateRegionName) {
  expectError(buildingText({regionOf(0, 10, 47, 12, 49, R"("name":"East")"),
                            regionOf(1, 10, 47, 12, 49, R"("name":"East")")}),
              1, "name of a region", "\"East\" a second time", "of its own");
}

TEST(BuildingErrors, AnUnknownRegionName) {
  expectFeatureError(nodeAt(2, 0, 11, 48, R"("region":"West")"), "region of a node", "\"West\"",
                     "the name of a region");
  expectFeatureError(wallOf(0, "[[11,48],[11,49]]", R"("region":"West")"), "region of an obstacle",
                     "\"West\"", "the name of a region");
}

TEST(BuildingErrors, ARegionOfAnotherLevel) {
  const std::string region = regionOf(3, 10, 47, 12, 49, R"("name":"Top")");
  expectError(buildingText({region, nodeAt(2, 2, 11, 48, R"("region":"Top")")}), 1,
              "region of a node", "\"Top\" of level 3", "a region of level 2");
  expectError(buildingText({wallOf(2, "[[11,48],[11,49]]", R"("region":"Top")"), region}), 0,
              "region of an obstacle", "\"Top\" of level 3", "a region of level 2");
}

TEST(BuildingErrors, AnEdgeToAnUnknownNode) {
  expectFeatureError(edgeOf(1, 9), "to of an edge", "9", "the id of a node");
  expectFeatureError(edgeOf(9, 1), "from of an edge", "9", "the id of a node");
  expectFeatureError(edgeOf(-4, 1), "from of an edge", "-4", "the id of a node");
}

TEST(BuildingErrors, AnEdgeWithoutExactlyTwoPositions) {
  expectFeatureError(featureOf("edge", R"("from":1,"to":1)", "LineString", "[[0,0]]"),
                     "geometry of an edge", "1 position", "exactly two");
  expectFeatureError(featureOf("edge", R"("from":1,"to":1)", "LineString", "[[0,0],[1,1],[2,2]]"),
                     "geometry of an edge", "3 positions", "exactly two");
}

TEST(BuildingErrors, AnEdgeWithADistanceOrMultiplicatorThatIsNotPositive) {
  for (const char* number : {"0", "-0.0", "-3", "0.0"}) {
    expectFeatureError(edgeOf(1, 1, "\"distance\":" + std::string(number)), "distance of an edge",
                       number, "above 0");
    expectFeatureError(edgeOf(1, 1, "\"multiplicator\":" + std::string(number)),
                       "multiplicator of an edge", number, "above 0");
  }
}

TEST(BuildingErrors, AnObstacleWithoutPositions) {
  expectFeatureError(wallOf(0, "[]"), "geometry of an obstacle", "no positions", "at least one");
  for (const char* rings : {"[]", "[[]]", "[[[11,48]],[]]"}) {
    expectFeatureError(featureOf("obstacle", "\"level\":0", "Polygon", rings),
                       "geometry of an obstacle", "no positions", "at least one");
  }
}

TEST(BuildingErrors, LongTextIsShortenedWithoutBreakingACharacter) {
  const std::string kept(59, 'x');
  const std::string name = kept + "\xc3\xa4" + std::string(100, 'y');
  const auto error = errorIn(buildingText({nodeAt(1, 0, 11, 48, R"("region":")" + name + '"')}));
  ASSERT_TRUE(error);
  EXPECT_EQ(error->found(), '"' + kept + "...\"");
}

}  // namespace
}  // namespace KorvaniTest
