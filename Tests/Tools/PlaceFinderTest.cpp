#include "Support/PlaceFinder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "Support/InputError.hpp"
#include "Tools/BuildingText.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Building;
using KorvaniTools::InputError;
using KorvaniTools::LevelNames;
using KorvaniTools::PlaceFinder;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class Places : public testing::Test {
 protected:
  std::string complaintAbout(const std::string& text) const {
    try {
      finder_.find(text);
    } catch (const InputError& error) {
      return error.what();
    }
    return "";
  }

  const Building building_ = parsed(
      {placeAt("Lobby", 0, 11, 48), placeAt("Hall 1", 1, 11.1, 48.1), placeAt("Hall 1", 2, 11, 48),
       placeAt("Kiosk", 1, 11.2, 48.2), placeAt("Kiosk", 1, 11.3, 48.3),
       placeAt("Kiosk", 0, 11.4, 48.4), placeAt("mail@desk", 0, 11.5, 48.5),
       placeAt("Room A, left, 2", 0, 11.6, 48.6), placeAt("LOBBY", 3, 11.7, 48.7),
       placeAt("Twin", 0, 11, 48), placeAt("Twin", 0, 11, 48)},
      R"("levels":[{"level":2,"name":"Gallery"}])");
  const PlaceFinder finder_{building_, LevelNames(building_)};
};

TEST_F(Places, AreFoundByName) {
  const auto spot = finder_.find("Lobby");
  EXPECT_EQ(spot.name, "Lobby");
  EXPECT_EQ(spot.coordinate.latitude, 48);
  EXPECT_EQ(spot.coordinate.longitude, 11);
  EXPECT_EQ(spot.level, 0);
}

TEST_F(Places, WrittenExactlyComeBeforeOthersWithOtherCapitals) {
  EXPECT_EQ(finder_.find("LOBBY").level, 3);
  EXPECT_THAT(complaintAbout("lobby"), HasSubstr("several places"));
  EXPECT_EQ(finder_.find("twin").name, "Twin");
}

TEST_F(Places, MayHaveCommasInTheirNames) {
  EXPECT_EQ(finder_.find("Room A, left, 2").coordinate.latitude, 48.6);
}

TEST_F(Places, OnALevelArePickedByNumberOrName) {
  EXPECT_EQ(finder_.find("Hall 1@2").level, 2);
  EXPECT_EQ(finder_.find("hall 1 @ 1").level, 1);
  EXPECT_EQ(finder_.find("Hall 1@gallery").level, 2);
}

TEST_F(Places, MayHaveAnAtSignInTheirNames) {
  EXPECT_EQ(finder_.find("mail@desk").coordinate.latitude, 48.5);
  EXPECT_EQ(finder_.find("mail@desk@0").coordinate.latitude, 48.5);
}

TEST_F(Places, OfTheSameNameAreRefusedWithTheCandidates) {
  EXPECT_THAT(complaintAbout("Hall 1"),
              AllOf(HasSubstr("several places"), HasSubstr("Hall 1@1  at 48.1,11.1,1"),
                    HasSubstr("Hall 1@2  at 48,11,2")));
}

TEST_F(Places, OfTheSameNameOnOneLevelAreListedByTheirCoordinates) {
  EXPECT_THAT(complaintAbout("Kiosk"), AllOf(HasSubstr("\n  48.2,11.2,1"),
                                             HasSubstr("\n  48.3,11.3,1"), HasSubstr("Kiosk@0")));
  EXPECT_THAT(complaintAbout("Kiosk@1"),
              AllOf(HasSubstr("48.2,11.2,1"), HasSubstr("48.3,11.3,1"), Not(HasSubstr("48.4"))));
}

TEST_F(Places, ThatAreTheSameSpotAreNotAmbiguous) { EXPECT_EQ(finder_.find("Twin").level, 0); }

TEST_F(Places, OnAnotherLevelAreSaidToBeThere) {
  EXPECT_EQ(complaintAbout("Hall 1@7"),
            "\"Hall 1\" is not on level 7; it is on level 1, level 2, Gallery");
}

TEST_F(Places, UnknownOnesAreAnsweredWithTheNearestMatch) {
  EXPECT_EQ(complaintAbout("Loby"),
            R"(no place is called "Loby"; did you mean "LOBBY" or "Lobby"?)");
  EXPECT_THAT(complaintAbout("left"), HasSubstr("did you mean \"Room A, left, 2\"?"));
  EXPECT_THAT(complaintAbout("Kiosc@1"), HasSubstr("did you mean \"Kiosk\"?"));
  EXPECT_THAT(finder_.closestNames("Hall", 3), ElementsAre("Hall 1"));
}

TEST(PlacesOfABuildingWithout, CanOnlyBeWrittenAsCoordinates) {
  const Building empty = parsed({});
  const PlaceFinder finder(empty, LevelNames());
  EXPECT_EQ(finder.find("1,2,3").level, 3);
  try {
    finder.find("Lobby");
    FAIL();
  } catch (const InputError& error) {
    EXPECT_THAT(error.what(), HasSubstr("no places, write LAT,LON,LEVEL"));
  }
}

TEST_F(Places, AreCoordinatesWhenThreeNumbersAreGiven) {
  const auto spot = finder_.find("-33.85, 151.2 ,-1");
  EXPECT_EQ(spot.coordinate.latitude, -33.85);
  EXPECT_EQ(spot.coordinate.longitude, 151.2);
  EXPECT_EQ(spot.level, -1);
  EXPECT_EQ(spot.name, "-33.85,151.2");
  EXPECT_EQ(finder_.find("1,2,3.0").level, 3);
}

TEST_F(Places, ThatAreNotOnEarthAreRefused) {
  EXPECT_THAT(complaintAbout("90.1,0,0"), HasSubstr("latitude"));
  EXPECT_THAT(complaintAbout("0,-180.1,0"), HasSubstr("longitude"));
  EXPECT_THAT(complaintAbout("nan,0,0"), HasSubstr("from -90 to 90"));
  EXPECT_THAT(complaintAbout("0,inf,0"), HasSubstr("from -180 to 180"));
  EXPECT_THAT(complaintAbout("0,1e999,0"), HasSubstr("longitude"));
}

TEST_F(Places, OnLevelsTooFarUpOrDownOrNotWholeAreRefused) {
  EXPECT_EQ(finder_.find("0,0,1000").level, 1000);
  EXPECT_THAT(complaintAbout("0,0,1001"), HasSubstr("from -1000 to 1000"));
  EXPECT_THAT(complaintAbout("0,0,-1e300"), HasSubstr("level"));
  EXPECT_THAT(complaintAbout("0,0,nan"), HasSubstr("level"));
  EXPECT_THAT(complaintAbout("0,0,0.5"), HasSubstr("whole number"));
}

TEST_F(Places, WithTooFewNumbersGetAHint) {
  EXPECT_THAT(complaintAbout("48,11"), HasSubstr("LAT,LON,LEVEL"));
}

}  // namespace
}  // namespace KorvaniTest
