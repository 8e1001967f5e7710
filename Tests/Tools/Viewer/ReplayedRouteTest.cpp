#include "Drawing/Viewer/ReplayedRoute.hpp"

#include <gmock/gmock.h>

#include <limits>

#include "ViewerCase.hpp"

namespace KorvaniTest {
namespace {

using KorvaniTools::Instruction;
using KorvaniTools::instructionReached;
using KorvaniTools::namedDestinations;
using KorvaniTools::OrderedJson;
using KorvaniTools::replayedRoute;
using KorvaniTools::timelinePoint;
using KorvaniTools::TracePoint;

/// A point east of node 1.
Instruction at(double east, const std::string& text) { return {text, {10, longitudeAt(east)}, 0}; }

TEST(TimelinePoint, IsSomewhereOnEarth) {
  EXPECT_TRUE(timelinePoint(90, -180, 0));
  EXPECT_FALSE(timelinePoint(90.1, 0, 0));
  EXPECT_FALSE(timelinePoint(0, 180.1, 0));
  EXPECT_FALSE(timelinePoint(std::numeric_limits<double>::quiet_NaN(), 0, 0));
}

class RouteOfAReplay : public ReplayFixture {
 protected:
  OrderedJson route(const std::string& more) {
    begin(viewerBuilding());
    return onlyEvent(R"({"op":"route","from":)" + pointAt(0, 0) + R"(,"to":[)" +
                     pointAt(30, 10, 1) + "]" + more + "}")["route"];
  }
};

TEST_F(RouteOfAReplay, IsReadBackAsItWasDelivered) {
  const OrderedJson delivered = route("");
  const auto read = replayedRoute(delivered);
  ASSERT_TRUE(read);
  EXPECT_EQ(KorvaniTools::routeJson(*read), delivered);
}

TEST_F(RouteOfAReplay, HasInstructionsEvenIfTheTraceWantsNone) {
  const OrderedJson delivered = route(R"(,"directions":false)");
  EXPECT_TRUE(delivered["directions"].empty());
  EXPECT_FALSE(replayedRoute(delivered)->directions().empty());
}

TEST_F(RouteOfAReplay, IsNoneWhenAnythingOfItIsNowhere) {
  OrderedJson delivered = route("");
  delivered["steps"][0]["start"]["lat"] = nullptr;
  EXPECT_FALSE(replayedRoute(delivered));
  EXPECT_FALSE(replayedRoute(nullptr));
  EXPECT_FALSE(replayedRoute({{"steps", OrderedJson::array()}}));
}

TEST(NamedDestinations, HaveTheNamesOfThePlacesThatAreThere) {
  const auto spots = namedDestinations(
      {TracePoint{10, longitudeAt(20.2), 0}, TracePoint{10, longitudeAt(20), 1}}, viewerBuilding());
  EXPECT_EQ(spots.at(0).name, "Desk");
  EXPECT_EQ(spots.at(1).name, "the destination") << "on another level";
}

TEST(InstructionReached, IsTheFirstWhosePlaceIsStillAhead) {
  const std::vector<Instruction> all{at(0, "go straight on"), at(20, "turn left"),
                                     at(30, "you reach it")};
  EXPECT_EQ(instructionReached(all, all), 0U);
  EXPECT_EQ(instructionReached(all, {at(20, "in 5 m turn left"), at(30, "you reach it")}), 1U);
  EXPECT_EQ(instructionReached(all, {at(30, "you reach it")}), 2U);
}

TEST(InstructionReached, IsTheWalkBeforeTheNextPlaceWhenThatIsToldFromHere) {
  const std::vector<Instruction> all{at(0, "go straight on"), at(20, "turn left"),
                                     at(30, "you reach it")};
  EXPECT_EQ(instructionReached(all, {at(4, "go straight on for 16 m"), at(20, "turn left"),
                                     at(30, "you reach it")}),
            0U);
  EXPECT_EQ(instructionReached(all, {at(22, "go straight on"), at(30, "you reach it")}), 1U);
}

TEST(InstructionReached, IsTheTurnBeforeTheWalkThatBeginsAtTheSamePlace) {
  const std::vector<Instruction> all{at(0, "go straight on"), at(20, "turn left"),
                                     at(20, "go straight on"), at(50, "you reach it")};
  EXPECT_EQ(instructionReached(all, {at(20, "in 3 m turn left"), at(20, "go straight on"),
                                     at(50, "you reach it")}),
            1U);
  EXPECT_EQ(instructionReached(all, {at(4, "go straight on for 16 m"), at(20, "turn left"),
                                     at(20, "go straight on"), at(50, "you reach it")}),
            0U);
  EXPECT_EQ(instructionReached(all, {at(20, "go straight on"), at(50, "you reach it")}), 2U);
}

TEST(InstructionReached, IsTheFirstWhenNothingFits) {
  EXPECT_EQ(instructionReached({at(0, "a"), at(10, "b")}, {at(50, "c")}), 0U);
}

}  // namespace
}  // namespace KorvaniTest
