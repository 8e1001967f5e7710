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

struct Line {
  Coordinate a;
  Coordinate b;
};

/// A level's walls in everybody's form, with lines of which all say the same.
class WallCase {
 public:
  WallCase(const Row& row, const PlainBuilding& building, double longest, std::size_t lines)
      : row_(row),
        graph_(makeEngineGraph(building)),
        detector_(std::as_const(*graph_->regions().front()).obstacles(),
                  std::weak_ptr<ConfigDependents>()),
        geos_(planeLinesOf(building, 0)),
        boost_(planeLinesOf(building, 0)) {
    SeededNumbers numbers(row.size);
    while (lines_.size() < lines) addLine(building, longest, numbers);
    for (std::size_t i = 0; i < lines; ++i) check(i);
  }

  std::size_t lines() const { return lines_.size(); }

  bool askEngine(std::size_t i) const {
    return detector_.isAnyBarrierInBetween(lines_[i].a, lines_[i].b);
  }
  bool askGeos(std::size_t i) const { return geos_.meet(planeLines_[i]); }
  bool askBoost(std::size_t i) const { return boost_.meet(planeLines_[i]); }

 private:
  /// From a place close to one node to another node.
  void addLine(const PlainBuilding& building, double longest, SeededNumbers& numbers) {
    constexpr double kHalfMetre = 5e-6;  // degrees
    const auto anyNode = [&] {
      return building.nodes[numbers.below(building.nodes.size())].coordinate;
    };
    Line line{anyNode(), anyNode()};
    line.a.latitude += numbers.between(-kHalfMetre, kHalfMetre);
    line.a.longitude += numbers.between(-kHalfMetre, kHalfMetre);
    const double length = KorvaniPlatform::greatCircleDistance(line.a, line.b);
    // Drawn again until it fits would take long on big levels; the line is shortened instead.
    if (length > longest) {
      const double part = longest * numbers.between(0.1, 1.0) / length;
      line.b.latitude = line.a.latitude + (line.b.latitude - line.a.latitude) * part;
      line.b.longitude = line.a.longitude + (line.b.longitude - line.a.longitude) * part;
    }
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

void addWallRow(const Row& row, double longest, std::size_t lines) {
  const auto shared = std::make_shared<Shared<WallCase>>([row, longest, lines] {
    return std::make_shared<WallCase>(row, makeOffices(row.size, 1, row.size), longest, lines);
  });
  addContestant(row, kEngine, shared, &WallCase::askEngine);
  addContestant(row, "GEOS", shared, &WallCase::askGeos);
  addContestant(row, "Boost R-tree", shared, &WallCase::askBoost);
}

}  // namespace

void addWalls(const Extent& extent) {
  const std::size_t lines = extent.quick ? 300 : 1000;
  for (const std::size_t segments : {1000U, 10000U, 100000U}) {
    addWallRow({"Walls", "lines up to 20 m", segments}, kShortLine, lines);
  }
  for (const std::size_t segments : {1000U, 10000U, 100000U}) {
    addWallRow({"Walls", "lines across the level", segments}, INFINITY, lines);
  }
}

}  // namespace KorvaniBenchmarks
