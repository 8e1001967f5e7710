#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::SizeIs;

const std::vector<std::string> kKinds = {
    "venue",        "building", "level",  "unit",     "opening", "fixture", "kiosk",
    "relationship", "address",  "anchor", "occupant", "amenity", "navPath"};

/// What reading says when the file of that kind holds that text.
std::string errorWith(const std::string& kind, const std::string& text) {
  TestArchive archive = smallArchive();
  archive.file(kind + ".geojson", text);
  return archive.errorOfReading();
}

TEST(HostileImdf, AnyFileThatIsNotJsonIsAnErrorThatNamesIt) {
  for (const std::string& kind : kKinds) {
    EXPECT_THAT(errorWith(kind, R"({"features":[)"),
                AllOf(HasSubstr(kind + ".geojson: "), HasSubstr("expected JSON")));
    EXPECT_THAT(errorWith(kind, ""), HasSubstr(kind + ".geojson: "));
  }
  TestArchive archive = smallArchive();
  archive.file("manifest.json", "{");
  EXPECT_THAT(archive.errorOfReading(), HasSubstr("manifest.json: "));
}

TEST(HostileImdf, AnyFileThatIsNoCollectionIsAnErrorThatNamesIt) {
  for (const std::string& kind : kKinds) {
    EXPECT_THAT(errorWith(kind, "[]"),
                HasSubstr(kind + ".geojson: found [], expected a FeatureCollection"));
    EXPECT_THAT(errorWith(kind, "{}"),
                HasSubstr(kind + ".geojson: features: found nothing, expected an array"));
    EXPECT_THAT(errorWith(kind, R"({"features":{}})"),
                HasSubstr(kind + ".geojson: features: found an object, expected an array"));
  }
}

TEST(HostileImdf, DeepNestingIsNoDanger) {
  const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
  for (const std::string& kind : kKinds) {
    EXPECT_THAT(errorWith(kind, deep), HasSubstr(kind + ".geojson: "));
    EXPECT_THAT(errorWith(kind, R"({"features":[{"id":)" + deep + R"(,"properties":)" + deep +
                                    R"(,"geometry":)" + deep + "}]}"),
                HasSubstr(kind + ".geojson: features[0]: "));
  }
}

TEST(HostileImdf, NumbersThatNoDoubleHoldsAreAnError) {
  EXPECT_THAT(errorWith("unit", R"({"features":[{"id":1e999}]})"),
              HasSubstr("unit.geojson: features[0]: "));
}

/// Every property of every kind, one after another, with a value of every other type.
TEST(HostileImdf, PropertiesOfOtherTypesNeverCrash) {
  const std::vector<Json> values = {nullptr,
                                    true,
                                    -1e300,
                                    "text",
                                    Json::array(),
                                    Json::object(),
                                    Json::array({nullptr, 1, "x"}),
                                    {{"id", 1}, {"type", "Point"}}};
  TestArchive whole = smallArchive();
  whole.floor(1, {"OO"}, {{'O', "elevator"}});
  whole.add("venue", "v", nullptr, {{"name", {{"en", "Venue"}}}});
  whole.add("building", "b", nullptr, {{"name", {{"en", "Building"}}}});
  whole.add("fixture", "f", boxOf({4, 0}, {5, 1}), {{"category", "desk"}, {"level_id", "level0"}});
  whole.add(
      "kiosk", "k", boxOf({4, 0}, {5, 1}),
      {{"name", {{"en", "Kiosk"}}}, {"level_id", "level0"}, {"display_point", pointOf({4, 0})}});
  whole.add("relationship", "r", nullptr,
            {{"category", "elevator"},
             {"direction", "directed"},
             {"origin", {{"id", "O0"}, {"feature_type", "unit"}}},
             {"intermediary", Json::array()},
             {"destination", {{"id", "O1"}, {"feature_type", "unit"}}}});
  whole.add("address", "s", nullptr, {{"address", "1 High Street"}});
  whole.add("anchor", "a", pointOf({1, 1}), {{"unit_id", "O0"}, {"address_id", "s"}});
  whole.add("occupant", "o", nullptr, {{"name", {{"en", "Bank"}}}, {"anchor_id", "a"}});
  whole.add("amenity", "m", pointOf({1, 1}), {{"category", "atm"}, {"unit_ids", {"O0"}}});
  whole.add("navPath", "w", pointOf({1, 1}), {{"level_id", "level0"}, {"neighbours", {"w"}}});
  std::size_t read = 0;
  std::size_t refused = 0;
  for (const auto& [name, text] : whole.files()) {
    const Json original = Json::parse(text);
    for (const auto& [key, before] : original["features"][0]["properties"].items()) {
      for (const Json& value : values) {
        Json changed = original;
        changed["features"][0]["properties"][key] = value;
        TestArchive archive = whole;
        archive.file(name, changed.dump());
        (archive.errorOfReading().empty() ? read : refused) += 1;
      }
    }
  }
  // What must be there is an error once it is gone, the rest is not.
  EXPECT_GT(read, 150U);
  EXPECT_GT(refused, 20U);
}

TEST(HostileImdf, GeometriesOfOtherShapesAreErrorsThatNameTheFeature) {
  const std::vector<std::string> geometries = {
      "null",
      "5",
      R"({"type":"Point"})",
      R"({"type":"Polygon"})",
      R"({"type":"Polygon","coordinates":5})",
      R"({"type":"Polygon","coordinates":[]})",
      R"({"type":"Polygon","coordinates":[[]]})",
      R"({"type":"Polygon","coordinates":[[[11,48],[11,49]]]})",
      R"({"type":"Polygon","coordinates":[[[11,48],[11,49],["x",48]]]})",
      R"({"type":"Polygon","coordinates":[[[11,48],[11,49],[12,95]]]})",
      R"({"type":"MultiPolygon","coordinates":[]})",
      R"({"type":"MultiPolygon","coordinates":[[]]})",
      R"({"type":"Circle","coordinates":[11,48]})"};
  for (const std::string& geometry : geometries) {
    TestArchive archive;
    archive.add("level", "level0", boxOf({0, 0}, {1, 1}), {{"ordinal", 0}});
    archive.add("unit", "lost", Json::parse(geometry),
                {{"category", "room"}, {"level_id", "level0"}});
    EXPECT_THAT(archive.errorOfReading(),
                HasSubstr("unit.geojson: features[0]: geometry of unit \"lost\": found "))
        << geometry;
  }
}

TEST(HostileImdf, OneBrokenFeatureAmongManyIsLeftOutAndNamed) {
  TestArchive archive = smallArchive();
  archive.add("unit", "broken", lineOf({{0, 0}, {1, 1}}),
              {{"category", "room"}, {"level_id", "level0"}});
  const FloorPlan plan = archive.read();
  EXPECT_THAT(plan.cells, SizeIs(2));
  EXPECT_EQ(remarkWith(plan, "broken features"),
            "unit.geojson: broken features, left out: features[2]: geometry of unit \"broken\": "
            "found \"LineString\", expected a Polygon or a MultiPolygon");
}

TEST(HostileImdf, MoreBrokenFeaturesThanSoundOnesAreAnError) {
  TestArchive archive = smallArchive();
  for (const char* id : {"a", "b", "c"}) {
    archive.add("unit", id, nullptr, {{"category", "room"}, {"level_id", "level0"}});
  }
  EXPECT_THAT(archive.errorOfReading(),
              HasSubstr("unit.geojson: features[2]: geometry of unit \"a\": found nothing"));
}

TEST(HostileImdf, FeaturesThatAreNoneAreLeftOutAndNamed) {
  TestArchive archive = smallArchive();
  Json collection = Json::parse(archive.files().at("unit.geojson"));
  collection["features"].push_back(7);
  collection["features"].push_back({{"id", "bare"}});
  archive.file("unit.geojson", collection.dump());
  const FloorPlan plan = archive.read();
  EXPECT_THAT(plan.cells, SizeIs(2));
  EXPECT_EQ(remarkWith(plan, "broken features"),
            "unit.geojson: broken features, left out: features[2]: found 7, expected a feature, "
            "features[3]: properties: found nothing, expected an object");
}

TEST(HostileImdf, FeaturesWithoutAnIdAreReadAndNamedByTheirIndex) {
  TestArchive archive = smallArchive();
  archive.feature("unit", "O0").erase("id");
  const FloorPlan plan = archive.read();
  EXPECT_EQ(cellOf(plan, "features[1]").category, "office");
}

TEST(HostileImdf, OutlinesThatCrossThemselvesAreRead) {
  TestArchive archive = smallArchive();
  archive.feature("unit", "O0")["geometry"] = {
      {"type", "Polygon"},
      {"coordinates",
       Json::array({Json::array({positionOf({0, 0}), positionOf({3, 2}), positionOf({3, 0}),
                                 positionOf({0, 2}), positionOf({0, 0})})})}};
  EXPECT_THAT(archive.read().cells, SizeIs(2));
}

TEST(HostileImdf, OutlinesWithoutAnAreaAreNoted) {
  TestArchive archive = smallArchive();
  archive.feature("unit", "O0")["geometry"] = {
      {"type", "Polygon"},
      {"coordinates",
       Json::array({Json::array({positionOf({0, 0}), positionOf({0, 1}), positionOf({0, 2})})})}};
  EXPECT_EQ(remarkWith(archive.read(), "area"), "unit.geojson: outlines without an area: \"O0\"");
}

TEST(HostileImdf, FilesThatTheFormatDoesNotKnowAreIgnored) {
  TestArchive archive = smallArchive();
  archive.file("environment.geojson", "not JSON");
  archive.file("detail.geojson", "not JSON");
  EXPECT_EQ(archive.errorOfReading(), "");
}

}  // namespace
}  // namespace KorvaniTest
