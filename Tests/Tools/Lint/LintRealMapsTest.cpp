// What lint finds in buildings that really stand somewhere.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "Building/BuildingReader.hpp"
#include "Lint/Lint.hpp"
#include "Support/Maps.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::LintFinding;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class LintRealMaps : public testing::Test {
 protected:
  void SetUp() override { SKIP_WITHOUT_MAPS(); }

  /// What is found in that file below the maps' folder, by rule.
  static std::map<std::string, std::vector<LintFinding>> findings(const std::string& file) {
    std::map<std::string, std::vector<LintFinding>> byRule;
    const auto building = KorvaniTools::readBuilding(mapFile(file));
    for (const LintFinding& finding : KorvaniTools::lintBuilding(building, {})) {
      byRule[finding.rule].push_back(finding);
    }
    return byRule;
  }

  static std::vector<std::string> names(const std::vector<LintFinding>& findings) {
    std::vector<std::string> names;
    for (const LintFinding& finding : findings) names.push_back(finding.names.at(0));
    return names;
  }

  static std::size_t nodeCount(const std::vector<LintFinding>& findings) {
    std::size_t count = 0;
    for (const LintFinding& finding : findings) count += finding.nodes.size();
    return count;
  }
};

TEST_F(LintRealMaps, TheCampusHasItsPathOfItsOwnItsOneWaySlipsAndTwoBlindPlaces) {
  auto found = findings("spb-polytech-imdf/spb.building.geojson");
  EXPECT_THAT(found["edge-through-wall"], IsEmpty());
  ASSERT_THAT(found["unreachable-island"], SizeIs(1));
  EXPECT_EQ(nodeCount(found["unreachable-island"]), 35U);
  EXPECT_EQ(nodeCount(found["no-way-in"]), 6U);
  EXPECT_EQ(nodeCount(found["one-way-trap"]), 2U);
  EXPECT_THAT(names(found["place-out-of-sight"]),
              UnorderedElementsAre("Classroom 277", "Main stairs"));
  EXPECT_THAT(found["place-unreachable"], IsEmpty());
  EXPECT_THAT(found["level-without-connection"], IsEmpty());
}

TEST_F(LintRealMaps, TheCongressCentreHangsTogetherButForItsStages) {
  auto found = findings("cch-32c3-graph/cch.building.geojson");
  EXPECT_THAT(names(found["place-behind-barrier"]), testing::Contains("Hall 1 Stage"));
  found.erase("place-behind-barrier");
  EXPECT_THAT(found, IsEmpty());
}

}  // namespace
}  // namespace KorvaniTest
