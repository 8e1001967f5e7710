// Whether a line crosses a wall of a level.

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Buildings/BuildingMaker.hpp"
#include "Buildings/EngineGraph.hpp"
#include "Buildings/PeerData.hpp"
#include "Buildings/SeededNumbers.hpp"
#include "Cases/Cases.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"
#include "Navigation/Obstacles/ObstacleDetector.hpp"
#include "Peers/BoostWalls.hpp"
#include "Peers/GeosWalls.hpp"
#include "Support/Timing.hpp"

namespace KorvaniBenchmarks {

using KorvaniNavigation::ConfigDependents;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::ObstacleDetector;

namespace {

/// Metres: how far a position sees the nodes that it may be mapped to.
constexpr double kShortLine = 20.0;

/// How the lines of a row run.
struct Course {
  const char* name;
  double longest = INFINITY;  ///< metres
  bool missesOnAxis = false;  ///< those exactly to the east or north that cross no wall
};

struct Line {
  Coordinate a;
  Coordinate b;
};

/// A level's walls in everybody's form, with lines of which all say the same.
class WallCase {
 public:
  WallCase(const Row& row, const PlainBuilding& building, const Course& course, std::size_t lines)
      : row_(row),
        graph_(makeEngineGraph(building)),
        detector_(std::as_const(*graph_->regions().front()).obstacles(),
                  std::weak_ptr<ConfigDependents>()),
        geos_(planeLinesOf(building, 0)),
        boost_(planeLinesOf(building, 0)) {
    SeededNumbers numbers(row.size);
    while (lines_.size() < lines) {
      const Line line = course.missesOnAxis ? lineOnAxis(building, numbers)
                                            : anyLine(building, course.longest, numbers);
      if (!course.missesOnAxis || !detector_.isAnyBarrierInBetween(line.a, line.b)) add(line);
    }
    for (std::size_t i = 0; i < lines; ++i) check(i);
  }

  std::size_t lines() const { return lines_.size(); }

  bool askEngine(std::size_t i) const {
    return detector_.isAnyBarrierInBetween(lines_[i].a, lines_[i].b);
  }
  bool askGeos(std::size_t i) const { return geos_.meet(planeLines_[i]); }
  bool askBoost(std::size_t i) const { return boost_.meet(planeLines_[i]); }

 private:
  /// A place close to a node.
  static Coordinate anyPlace(const PlainBuilding& building, SeededNumbers& numbers) {
    constexpr double kHalfMetre = 5e-6;  // degrees
    Coordinate place = building.nodes[numbers.below(building.nodes.size())].coordinate;
    place.latitude += numbers.between(-kHalfMetre, kHalfMetre);
    place.longitude += numbers.between(-kHalfMetre, kHalfMetre);
    return place;
  }

  /// From a place close to one node to another node.
  static Line anyLine(const PlainBuilding& building, double longest, SeededNumbers& numbers) {
    const Coordinate node = building.nodes[numbers.below(building.nodes.size())].coordinate;
    Line line{anyPlace(building, numbers), node};
    const double length = KorvaniPlatform::greatCircleDistance(line.a, line.b);
    // Drawn again until it fits would take long on big levels; the line is shortened instead.
    if (length > longest) {
      const double part = longest * numbers.between(0.1, 1.0) / length;
      line.b.latitude = line.a.latitude + (line.b.latitude - line.a.latitude) * part;
      line.b.longitude = line.a.longitude + (line.b.longitude - line.a.longitude) * part;
    }
    return line;
  }

  /// Of 15 to 45 metres: halls and corridors leave room for some of these.
  static Line lineOnAxis(const PlainBuilding& building, SeededNumbers& numbers) {
    const Coordinate from = anyPlace(building, numbers);
    if (numbers.below(2) == 0) {
      return {from, {from.latitude + numbers.between(1.35e-4, 4.05e-4), from.longitude}};
    }
    return {from, {from.latitude, from.longitude + numbers.between(2e-4, 6e-4)}};
  }

  void add(const Line& line) {
    lines_.push_back(line);
    planeLines_.push_back({KorvaniPlatform::MKMapPointForCoordinate(line.a),
                           KorvaniPlatform::MKMapPointForCoordinate(line.b)});
  }

  void check(std::size_t i) {
    const bool crosses = askEngine(i);
    if (askGeos(i) != crosses) disagree(row_, "GEOS", "line " + std::to_string(i));
    if (askBoost(i) != crosses) disagree(row_, "Boost", "line " + std::to_string(i));
  }

  Row row_;
  std::shared_ptr<KRVNavGraph> graph_;
  ObstacleDetector detector_;
  GeosWalls geos_;
  BoostWalls boost_;
  std::vector<Line> lines_;
  std::vector<PlaneSegment> planeLines_;
};

using Ask = bool (WallCase::*)(std::size_t) const;

void addContestant(const Row& row, const std::string& name,
                   const std::shared_ptr<Shared<WallCase>>& shared, Ask ask) {
  measure(row, name, [shared, ask](benchmark::State& state) {
    const WallCase& data = shared->get();
    timeTogether(state, data.lines(),
                 [&](std::size_t i) { benchmark::DoNotOptimize((data.*ask)(i)); });
  });
}

void addWallRow(const Course& course, std::size_t size, std::size_t lines) {
  const Row row{"Walls", course.name, size};
  const auto shared = std::make_shared<Shared<WallCase>>([row, course, lines] {
    return std::make_shared<WallCase>(row, makeOffices(row.size, 1, row.size), course, lines);
  });
  addContestant(row, kEngine, shared, &WallCase::askEngine);
  addContestant(row, "GEOS", shared, &WallCase::askGeos);
  addContestant(row, "Boost R-tree", shared, &WallCase::askBoost);
}

}  // namespace

void addWalls(const Extent& extent) {
  const std::size_t lines = extent.quick ? 300 : 1000;
  for (const Course& course :
       {Course{"lines up to 20 m", kShortLine, false}, Course{"lines across the level"},
        Course{"misses along an axis", INFINITY, true}}) {
    for (const std::size_t segments : {1000U, 10000U, 100000U}) {
      addWallRow(course, segments, lines);
    }
  }
}

}  // namespace KorvaniBenchmarks
