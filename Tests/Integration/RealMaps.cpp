#include "Integration/RealMaps.hpp"

#include <gmock/gmock.h>

#include "Building/BuildingGraph.hpp"
#include "Building/BuildingReader.hpp"
#include "Support/Maps.hpp"
#include "Support/PlaceFinder.hpp"
#include "Support/RouteText.hpp"

namespace KorvaniTest {

using KorvaniTools::LevelNames;
using KorvaniTools::PlaceFinder;
using KorvaniTools::RouteAnswer;
using KorvaniTools::Spot;

void RealMaps::SetUp() {
  SKIP_WITHOUT_MAPS();
  useThreads();
  config().setCheckDestinationsAgainstOwnWalls(true);
  building_ = KorvaniTools::readBuilding(mapFile(file_));
  KorvaniTools::provideGraph(KorvaniTools::makeGraph(*building_));
}

Spot RealMaps::spot(const std::string& text) const {
  return PlaceFinder(building(), LevelNames(building())).find(text);
}

RouteFacts RealMaps::route(const std::string& from, const std::vector<std::string>& to,
                           bool barrierFree) const {
  std::vector<Spot> destinations;
  destinations.reserve(to.size());
  for (const std::string& each : to) destinations.push_back(spot(each));
  const RouteAnswer answer = KorvaniTools::searchRoute(spot(from), destinations, barrierFree);
  RouteFacts facts;
  facts.found = answer.route && !answer.direct;
  facts.destination = answer.destination;
  if (!answer.route) return facts;
  for (const auto& step : answer.route->steps()) {
    if (facts.levels.empty()) facts.levels.push_back(step.start()->level());
    if (step.levelChange()) facts.levels.push_back(step.end()->level());
    if (!step.neighborType().empty()) facts.kinds.insert(step.neighborType());
    facts.groundMetres +=
        KorvaniPlatform::greatCircleDistance(step.start()->coordinate(), step.end()->coordinate());
    facts.barrierFree = facts.barrierFree && step.barrierFree();
  }
  const auto& name = destinations[answer.destination].name;
  for (const auto& told : KorvaniTools::routeInstructions(*answer.route, {}, name)) {
    facts.text += told.text + '\n';
  }
  return facts;
}

void RealMaps::expectSound(const RouteFacts& facts, const std::string& destination) const {
  EXPECT_TRUE(facts.found);
  EXPECT_THAT(facts.text, testing::HasSubstr(destination + '\n'));
}

}  // namespace KorvaniTest
