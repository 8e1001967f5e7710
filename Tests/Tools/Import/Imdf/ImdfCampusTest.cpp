/// The archive of a real campus: two buildings that count their floors differently, with
/// misspelt properties and files that the format does not know.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "Support/Maps.hpp"
#include "Tools/Import/Imdf/TestArchive.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::ConnectionKind;
using KorvaniTools::PlanCell;
using KorvaniTools::PlanShaft;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class CampusArchive : public testing::Test {
 protected:
  void SetUp() override {
    SKIP_WITHOUT_MAPS();
    plan_ = KorvaniTools::readImdf(mapFile("spb-polytech-imdf"), {});
  }

  std::size_t unitsOf(const std::set<std::string>& categories) const {
    const auto fits = [&](const PlanCell& cell) { return categories.contains(*cell.category); };
    return static_cast<std::size_t>(std::count_if(plan_.cells.begin(), plan_.cells.end(), fits));
  }

  std::size_t shaftsOf(ConnectionKind kind) const {
    const auto fits = [&](const PlanShaft& shaft) { return shaft.kind == kind; };
    return static_cast<std::size_t>(std::count_if(plan_.shafts.begin(), plan_.shafts.end(), fits));
  }

  FloorPlan plan_;
};

TEST_F(CampusArchive, HasAllUnitsAndOpenings) {
  EXPECT_THAT(plan_.cells, SizeIs(443));
  EXPECT_THAT(plan_.doors, SizeIs(472));
  EXPECT_EQ(unitsOf({"classroom"}), 234U);
  EXPECT_EQ(unitsOf({"auditorium"}), 77U);
  EXPECT_EQ(unitsOf({"stairs"}), 59U);
  EXPECT_EQ(unitsOf({"walkway"}), 29U);
  EXPECT_EQ(unitsOf({"elevator"}), 5U);
  EXPECT_EQ(unitsOf({"restroom.male", "restroom.female"}), 20U);
}

TEST_F(CampusArchive, SharesLevelsBetweenItsBuildings) {
  std::vector<double> levels;
  for (const auto& level : plan_.levels) levels.push_back(level.level);
  EXPECT_THAT(levels, ElementsAre(0, 1, 2, 3, 4, 5));
  EXPECT_EQ(plan_.levels[0].name, "Level 1");
  EXPECT_EQ(plan_.levels[1].name,
            "Level 1 (Academic building №3), Level 2 (Main academic building)");
  EXPECT_EQ(plan_.levels[5].name, "Level 5");
}

TEST_F(CampusArchive, IsNamedAfterItsVenue) {
  EXPECT_EQ(plan_.name, "Peter the Great St.Petersburg Polytechnic University");
}

TEST_F(CampusArchive, HasItsStairwellsAndItsLift) {
  EXPECT_EQ(shaftsOf(ConnectionKind::stairs), 16U);
  EXPECT_EQ(shaftsOf(ConnectionKind::elevator), 1U);
  for (const PlanShaft& shaft : plan_.shafts) {
    if (shaft.kind != ConnectionKind::elevator) continue;
    EXPECT_THAT(shaft.levels, ElementsAre(1, 2, 3, 4, 5));
  }
}

TEST_F(CampusArchive, HasAPlaceForEachOccupant) {
  std::size_t occupants = plan_.places.size();
  for (const PlanCell& cell : plan_.cells) {
    if (!cell.isPlace) continue;
    EXPECT_TRUE(cell.name);
    // Addresses come with the anchors of occupants.
    if (cell.further.contains("address")) ++occupants;
  }
  EXPECT_EQ(occupants, 264U);
}

TEST_F(CampusArchive, NamesRoomsInTheWantedLanguage) {
  const auto named = [&](const std::string& name) {
    return std::find_if(plan_.cells.begin(), plan_.cells.end(),
                        [&](const PlanCell& cell) { return cell.name == name; });
  };
  const auto cafe = named("Coffee “Leto”");
  ASSERT_NE(cafe, plan_.cells.end());
  EXPECT_EQ(cafe->further.at("website"), "https://umto.spbstu.ru/Kafe_bufet/");
  ImdfOptions options;
  options.language = "ru";
  plan_ = KorvaniTools::readImdf(mapFile("spb-polytech-imdf"), options);
  const auto room = named("Кабинет 104");
  ASSERT_NE(room, plan_.cells.end());
  EXPECT_EQ(room->further.at("name:en"), "Classroom 104");
}

TEST_F(CampusArchive, HasNoEntrances) {
  EXPECT_FALSE(std::any_of(plan_.doors.begin(), plan_.doors.end(),
                           [](const auto& door) { return door.entrance; }));
}

}  // namespace
}  // namespace KorvaniTest
