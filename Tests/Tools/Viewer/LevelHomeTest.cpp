#include "Drawing/Viewer/LevelHome.hpp"

#include <gtest/gtest.h>

namespace KorvaniTest {
namespace {

using KorvaniTools::homeOf;
using KorvaniTools::SceneLevel;
using KorvaniTools::ScenePlace;
using KorvaniTools::SceneRoom;

/// A room of 4 by 4 metres.
SceneRoom roomAt(double x, double y) {
  SceneRoom room;
  room.rings = {{{x, y}, {x + 4, y}, {x + 4, y + 4}, {x, y + 4}, {x, y}}};
  return room;
}

ScenePlace placeAt(double x, double y) {
  ScenePlace place;
  place.at = {x, y};
  return place;
}

TEST(LevelHome, IsWhereMostRoomsAre) {
  SceneLevel level;
  for (const double x : {10.0, 14.0, 18.0, 22.0, 26.0}) level.rooms.push_back(roomAt(x, 5));
  level.rooms.push_back(roomAt(500, 300));  // a shed at the other end of the campus
  level.places.push_back(placeAt(900, 900));
  const auto home = homeOf(level);
  ASSERT_TRUE(home);
  EXPECT_EQ(home->left, 10);
  EXPECT_EQ(home->top, 5);
  EXPECT_EQ(home->width, 20);
  EXPECT_EQ(home->height, 4);
}

TEST(LevelHome, OfASingleRoomIsThatRoom) {
  SceneLevel level;
  level.rooms.push_back(roomAt(10, 5));
  EXPECT_EQ(homeOf(level)->width, 4);
}

TEST(LevelHome, IsWhereMostPlacesAreWhenNoRoomsAreDrawn) {
  SceneLevel level;
  for (const double x : {10.0, 11.0, 12.0, 13.0, 14.0}) level.places.push_back(placeAt(x, x));
  level.places.push_back(placeAt(800, 0));
  EXPECT_EQ(homeOf(level)->width, 4);
  EXPECT_EQ(homeOf(level)->height, 4);
}

TEST(LevelHome, IsNowhereOnALevelWithNextToNothing) {
  SceneLevel level;
  EXPECT_FALSE(homeOf(level));
  level.places = {placeAt(1, 1), placeAt(2, 2)};
  EXPECT_FALSE(homeOf(level));
}

}  // namespace
}  // namespace KorvaniTest
