#include "Import/Imdf/ImdfNames.hpp"

#include <gtest/gtest.h>

#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::ImdfLanguages;

std::string nameIn(const std::string& wanted, const std::string& archive, const Json& label) {
  const auto chosen = ImdfLanguages(wanted, archive).label(label);
  return chosen ? chosen->text : "";
}

const Json kLift = {{"de", "Aufzug"}, {"en-GB", "Lift"}, {"en-US", "Elevator"}};

TEST(ImdfNames, AreInTheWantedLanguage) {
  EXPECT_EQ(nameIn("de", "", kLift), "Aufzug");
  EXPECT_EQ(nameIn("EN-us", "", kLift), "Elevator");
}

TEST(ImdfNames, AreInALanguageOfTheSameFamily) {
  EXPECT_EQ(nameIn("en", "", kLift), "Lift");
  EXPECT_EQ(nameIn("de-AT", "", kLift), "Aufzug");
}

TEST(ImdfNames, AreElseInTheArchivesLanguageOrTheFirst) {
  EXPECT_EQ(nameIn("fr", "en-US", kLift), "Elevator");
  EXPECT_EQ(nameIn("fr", "it", kLift), "Aufzug");
}

TEST(ImdfNames, KeepTheOtherLanguagesThatDiffer) {
  const auto label = ImdfLanguages("de", "").label({{"de", "Bar"}, {"en", "Bar"}, {"fr", "Café"}});
  ASSERT_TRUE(label);
  EXPECT_EQ(label->others, (std::map<std::string, std::string>{{"fr", "Café"}}));
}

TEST(ImdfNames, ThatSayNothingAreNone) {
  EXPECT_EQ(nameIn("en", "", {{"en", " - "}}), "");
  EXPECT_EQ(nameIn("en", "", {{"en", nullptr}}), "");
  EXPECT_EQ(nameIn("en", "", Json::object()), "");
  EXPECT_EQ(nameIn("en", "", 5), "");
  EXPECT_EQ(nameIn("en", "", {{"en", "-"}, {"ru", "Касса"}}), "Касса");
}

TEST(ImdfNames, MayBePlainStrings) { EXPECT_EQ(nameIn("en", "", " Hall 2 "), "Hall 2"); }

TEST(ImdfNames, OfAPlanFollowTheOptionAndTheManifest) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0")["name"] = {{"de", "Kasse"}, {"fr", "Caisse"}};
  ImdfOptions options;
  options.language = "fr";
  EXPECT_EQ(cellOf(archive.read(options), "O0").name, "Caisse");
  EXPECT_EQ(cellOf(archive.read(), "O0").name, "Kasse");
  archive.file("manifest.json", R"({"version":"1.0.0","language":"fr-FR"})");
  EXPECT_EQ(cellOf(archive.read(), "O0").name, "Caisse");
}

TEST(ImdfNames, OfAnotherTypeAreNoted) {
  TestArchive archive = smallArchive();
  archive.properties("unit", "O0")["name"] = {{"en", 7}};
  const FloorPlan plan = archive.read();
  EXPECT_FALSE(cellOf(plan, "O0").name);
  EXPECT_EQ(remarkWith(plan, "name"),
            "unit.geojson: name is not an object of names by language, ignored: \"O0\"");
}

TEST(ImdfReader, TakesAttributionAndLicenceFromTheOptions) {
  ImdfOptions options;
  EXPECT_FALSE(smallArchive().read(options).attribution);
  options.attribution = "Terminal Ltd";
  options.licence = "CC-BY-4.0";
  const FloorPlan plan = smallArchive().read(options);
  EXPECT_EQ(plan.attribution, "Terminal Ltd");
  EXPECT_EQ(plan.licence, "CC-BY-4.0");
}

}  // namespace
}  // namespace KorvaniTest
