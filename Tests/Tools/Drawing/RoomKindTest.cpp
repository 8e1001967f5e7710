#include "Drawing/RoomKind.hpp"

#include <gtest/gtest.h>

namespace KorvaniTest {
namespace {

using KorvaniTools::ConnectionSymbol;
using KorvaniTools::connectionSymbolOf;
using KorvaniTools::RoomKind;
using KorvaniTools::roomKindOf;

TEST(RoomKind, KnowsWhatMapsCallRooms) {
  EXPECT_EQ(roomKindOf("toilets"), RoomKind::toilet);
  EXPECT_EQ(roomKindOf("shop"), RoomKind::shop);
  EXPECT_EQ(roomKindOf("walkway"), RoomKind::corridor);
  EXPECT_EQ(roomKindOf("auditorium"), RoomKind::classroom);
  EXPECT_EQ(roomKindOf("void"), RoomKind::closed);
}

TEST(RoomKind, DisregardsCapitals) { EXPECT_EQ(roomKindOf("Office"), RoomKind::office); }

TEST(RoomKind, LooksAtThePartsOfACategory) {
  EXPECT_EQ(roomKindOf("restroom.female"), RoomKind::toilet);
  EXPECT_EQ(roomKindOf("fast_food"), RoomKind::food);
  EXPECT_EQ(roomKindOf("room=office"), RoomKind::office);
}

TEST(RoomKind, IsOtherForWhatItDoesNotKnow) {
  EXPECT_EQ(roomKindOf(""), RoomKind::other);
  EXPECT_EQ(roomKindOf("room"), RoomKind::other);
  EXPECT_EQ(roomKindOf("..."), RoomKind::other);
  EXPECT_EQ(roomKindOf("barometer"), RoomKind::other);
}

TEST(RoomKind, HasANameForClassesAndWordsForPeople) {
  EXPECT_EQ(nameOf(RoomKind::toilet), "toilet");
  EXPECT_EQ(wordsFor(RoomKind::toilet), "Toilets");
  EXPECT_EQ(nameOf(RoomKind::closed), "closed");
  EXPECT_EQ(wordsFor(RoomKind::closed), "Closed");
}

TEST(ConnectionSymbol, KnowsWhatMapsCallConnections) {
  EXPECT_EQ(connectionSymbolOf("Lift"), ConnectionSymbol::elevator);
  EXPECT_EQ(connectionSymbolOf("steps"), ConnectionSymbol::stairs);
  EXPECT_EQ(connectionSymbolOf(""), ConnectionSymbol::path);
  EXPECT_EQ(connectionSymbolOf("catapult"), ConnectionSymbol::path);
  EXPECT_EQ(nameOf(ConnectionSymbol::ladder), "ladder");
  EXPECT_EQ(wordsFor(ConnectionSymbol::elevator), "Lift");
}

}  // namespace
}  // namespace KorvaniTest
