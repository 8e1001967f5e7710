#include "Drawing/Viewer/ViewerPage.hpp"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "Drawing/Viewer/ViewerSources.hpp"
#include "ViewerCase.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::makeScene;
using KorvaniTools::Scene;
using KorvaniTools::viewerPage;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// What the page's script is told.
nlohmann::json dataOf(const std::string& page) {
  const std::string open = R"(<script type="application/json" id="data">)";
  const std::size_t begin = page.find(open) + open.size();
  return nlohmann::json::parse(page.substr(begin, page.find("</script>", begin) - begin));
}

class ViewerPage : public ViewerFixture {};

TEST_F(ViewerPage, HasEveryLevelAndNoGapLeft) {
  const std::string page = viewerPage(makeScene(viewerBuilding()));
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
  EXPECT_EQ(countOf(page, R"(<g class="level" data-level=)"), 2U);
  EXPECT_THAT(page, HasSubstr("<title>House</title>"));
  EXPECT_THAT(page, HasSubstr("2 levels · 3 places"));
  EXPECT_THAT(page, HasSubstr("Map data: us"));
  EXPECT_THAT(page, Not(HasSubstr("{{")));
}

TEST_F(ViewerPage, HasALegendOfWhatIsDrawn) {
  const std::string page = viewerPage(makeScene(viewerBuilding()));
  const std::size_t begin = page.find("id=\"legend-list\"");
  const std::string legend = page.substr(begin, page.find("</ul>", begin) - begin);
  EXPECT_THAT(legend, HasSubstr("</svg>Stairs</li>"));
  EXPECT_THAT(legend, Not(HasSubstr("Lift")));
}

TEST_F(ViewerPage, NamesNoOtherFile) {
  const std::string page = viewerPage(makeScene(viewerBuilding()));
  const std::regex reference(R"re((src|href)="(?!#|data:)|url\(|@import|<link [^>]*stylesheet)re");
  std::smatch found;
  EXPECT_FALSE(std::regex_search(page, found, reference)) << found.str();
}

TEST_F(ViewerPage, ItsPolicyAllowsItsOwnScriptAlone) {
  const std::string page = viewerPage(makeScene(viewerBuilding()));
  const std::string hash(KorvaniTools::viewerScriptHash());
  EXPECT_THAT(hash, testing::MatchesRegex("sha256-[A-Za-z0-9+/]{43}="));
  EXPECT_THAT(page, HasSubstr("default-src 'none'; script-src '" + hash + "';"));
}

TEST_F(ViewerPage, NamesCannotEndTheScriptOrBecomeMarkup) {
  const std::string name =
      "</script><script>alert(1)</script><img src=x>\\\" \xE2\x80\xA8 {{data}}";
  const std::string inFile = R"(</script><script>alert(1)</script><img src=x>\\\" )"
                             "\xE2\x80\xA8 {{data}}";
  const std::string page = viewerPage(makeScene(viewerBuilding(inFile)));
  EXPECT_EQ(countOf(page, "<script"), 2U);
  EXPECT_EQ(countOf(page, "</script"), 2U);
  EXPECT_THAT(page, Not(HasSubstr("<img")));
  EXPECT_EQ(dataOf(page)["places"][1]["name"], name);
}

TEST_F(ViewerPage, ABuildingWithoutNameAndSourceSaysSo) {
  const std::string page = viewerPage(Scene{});
  EXPECT_THAT(page, HasSubstr("<title>Floor plan</title>"));
  EXPECT_THAT(page, HasSubstr("Source of the map not named"));
  EXPECT_THAT(page, HasSubstr("0 levels · 0 places"));
  EXPECT_TRUE(dataOf(page)["levels"].empty());
}

TEST_F(ViewerPage, CarriesTheWalkWhenThereIsOne) {
  const Scene scene = makeScene(viewerBuilding());
  EXPECT_TRUE(dataOf(viewerPage(scene))["walk"].is_null());
  const auto walk = timeline(routeTo(20, 0) + lineAt("position", 4, 0));
  EXPECT_EQ(dataOf(viewerPage(scene, walk))["walk"]["moments"].size(), 2U);
}

TEST_F(ViewerPage, TheSameSceneAndWalkGiveTheSamePage) {
  const Scene scene = makeScene(viewerBuilding());
  const std::string trace = routeTo(20, 0) + lineAt("snap", 4, 1) + lineAt("position", 4, 1);
  EXPECT_EQ(viewerPage(scene, timeline(trace)), viewerPage(scene, timeline(trace)));
}

TEST_F(ViewerPage, InvalidTextOfAnotherEncodingDoesNotBreakThePage) {
  Scene scene = makeScene(viewerBuilding());
  scene.name = "caf\xE9";
  scene.levels[0].places[0].name = "\xFF\xFE";
  const std::string page = viewerPage(scene);
  EXPECT_EQ(dataOf(page)["places"][0]["name"], "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_THAT(page, HasSubstr("<title>caf\xEF\xBF\xBD</title>"));
}

}  // namespace
}  // namespace KorvaniTest
