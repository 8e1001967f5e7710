// The graph's indivisible properties, written by one thread while another reads them.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Support/Points.hpp"

namespace KorvaniNavigation {
namespace {

using namespace KorvaniTest;

// Runs `write` with false, true, false, ... on a thread of its own while `read` runs here.
template <class Write, class Read>
void whileWriting(Write write, Read read) {
  std::atomic<bool> done{false};
  std::thread writer([&] {
    for (bool turn = false; !done.load(); turn = !turn) write(turn);
  });
  for (int i = 0; i < 2000; ++i) read();
  done.store(true);
  writer.join();
}

TEST(AtomicProperties, ALocationIsReadWhole) {
  const auto point = at(1, 1);
  const CLLocation low(CLLocationCoordinate2D{1, 1});
  const CLLocation high(CLLocationCoordinate2D{2, 2});
  int torn = 0;
  whileWriting([&](bool turn) { point->setLocation(turn ? high : low); },
               [&] {
                 const CLLocationCoordinate2D seen = point->location().coordinate();
                 if (seen.latitude != seen.longitude) ++torn;
               });
  EXPECT_EQ(torn, 0);
}

TEST(AtomicProperties, AnIdentifierNumberIsReadWhole) {
  const auto point = at(1, 1);
  const std::int64_t other = std::int64_t{7} << 40;
  int torn = 0;
  whileWriting([&](bool turn) { point->setIdentifierNumber(turn ? other : -1); },
               [&] {
                 const std::int64_t seen = point->identifierNumber();
                 if (seen != -1 && seen != other) ++torn;
               });
  EXPECT_EQ(torn, 0);
}

TEST(AtomicProperties, ARegionIsReadWholeOrAbsent) {
  const auto point = at(1, 1);
  const auto region = std::make_shared<KRVNavRegion>(3);
  int wrong = 0;
  whileWriting([&](bool turn) { point->setRegion(turn ? region : nullptr); },
               [&] {
                 const auto seen = point->region();
                 if (seen && seen != region) ++wrong;
               });
  EXPECT_EQ(wrong, 0);
}

TEST(AtomicProperties, AGraphIsReadWholeOrAbsent) {
  const auto graph = std::make_shared<KRVNavGraph>();
  const auto region = std::make_shared<KRVNavRegion>(3);
  int wrong = 0;
  whileWriting([&](bool turn) { region->setGraph(turn ? graph : nullptr); },
               [&] {
                 const auto seen = region->graph();
                 if (seen && seen != graph) ++wrong;
               });
  EXPECT_EQ(wrong, 0);
}

TEST(AtomicProperties, EndsAndTypeOfAnEdgeAreReadWhole) {
  const auto a = at(1, 1, 0, 1);
  KRVNavEdge edge(a, a);
  const std::string longType(200, 'x');
  int wrong = 0;
  whileWriting(
      [&](bool turn) {
        edge.setStart(at(1, 1, 0, turn ? 2 : 3));
        edge.setEnd(at(1, 1, 0, turn ? 2 : 3));
        edge.setType(turn ? std::optional<std::string>(longType) : std::nullopt);
      },
      [&] {
        const auto type = edge.type();
        if (edge.start()->identifier() > 3 || edge.end()->identifier() > 3) ++wrong;
        if (type && *type != longType) ++wrong;
      });
  EXPECT_EQ(wrong, 0);
}

TEST(AtomicProperties, ReplacingTheLastReferenceToAChainOfObjectsDoesNotBlock) {
  // The end of an old value may need any of the mutexes, its own holder's too.
  const auto holder = at(1, 1, 0, 1);
  KRVNavEdge edge(holder, holder);
  for (int i = 0; i < 500; ++i) {
    auto graph = std::make_shared<KRVNavGraph>();
    auto region = std::make_shared<KRVNavRegion>(0);
    graph->add(region);
    auto point = at(1, 1, 0, i);
    region->addNode(point);
    graph->addEdge(std::make_shared<KRVNavEdge>(point, point), *point, *point);
    edge.setStart(point);
  }
  edge.setStart(holder);
  EXPECT_EQ(edge.start(), holder);
}

}  // namespace
}  // namespace KorvaniNavigation
