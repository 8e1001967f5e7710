#include <iostream>
#include <memory>

#include "KorvaniNavigation.hpp"

using namespace KorvaniNavigation;

int main() {
  // The ground floor: a corridor of 50 m northwards from the entrance, then 30 m to the lift.
  auto graph = std::make_shared<KRVNavGraph>();
  auto ground = std::make_shared<KRVNavRegion>(0);
  ground->setSouthWestCoordinate({47.999, 10.999});
  ground->setNorthEastCoordinate({48.001, 11.001});
  graph->add(ground);

  auto point = [&](double latitude, double longitude, int identifier) {
    CLLocationCoordinate2D coordinate{latitude, longitude};
    auto node = std::make_shared<KRVNavPoint>(coordinate, 0, identifier);
    ground->addNode(node);
    return node;
  };
  auto join = [&](const auto& a, const auto& b) {
    graph->addEdge(std::make_shared<KRVNavEdge>(a, b), *a, *b);
    graph->addEdge(std::make_shared<KRVNavEdge>(b, a), *b, *a);
  };
  auto entrance = point(48.00000, 11.0000, 1);
  auto corner = point(48.00045, 11.0000, 2);
  auto lift = point(48.00045, 11.0004, 3);
  join(entrance, corner);
  join(corner, lift);

  auto& navigation = Navigation::sharedInstance();
  navigation.provideGraph(graph);

  // Called on the main queue: with a route after each position, and once more on arrival.
  auto guide = [&](auto update, auto route, bool finished, auto /*destination*/) {
    if (route) {
      std::cout << route->steps().size() << " steps, " << route->totalDistance() << " m\n";
      update->updateStartPoint(lift);  // The next position: here the traveller is very fast.
    }
    if (finished) {
      std::cout << "You have arrived.\n";
      KorvaniPlatform::mainQueue().stop();
    }
  };
  auto task = navigation.routingTask(entrance, {lift}, guide);
  task->run();
  KorvaniPlatform::mainQueue().run();
}
