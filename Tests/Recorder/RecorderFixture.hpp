#pragma once

/// Tests of the recorder: a facade to record, a folder to record into.
///
///     class Positions : public RecorderFixture {};
///
///     TEST_F(Positions, AreWritten) {
///       const TextBuilding building("A--B");
///       record(building.graph());
///       const auto task = lead(building.point("A"), {building.point("B")});
///       EXPECT_THAT(lines(), ElementsAre(routeLine("A", "B")));
///     }

#include <memory>
#include <string>
#include <vector>

#include "Recorder/Recorder.hpp"
#include "Recorder/TemporaryFolder.hpp"
#include "Support/FacadeFixture.hpp"
#include "Trace/TraceWriter.hpp"

namespace KorvaniTest {

class RecorderFixture : public FacadeFixture {
 protected:
  using Recorder = KorvaniNavigation::Recorder;

  /// Provides a graph through the recorder, and announces it.
  void record(const std::shared_ptr<KRVNavGraph>& graph) {
    recording.provideGraph(graph);
    announceGraph();
  }

  /// A recorded routing that has published its first route.
  std::shared_ptr<RoutingTask> lead(const PointPtr& from, const std::vector<PointPtr>& to) {
    auto task = navigation().routingTask(from, to, recorder());
    recording.run(task);
    pump();
    return task;
  }

  /// Feeds a position through the newest handle, and does the work.
  bool walkTo(const PointPtr& position) {
    const bool taken = recording.updateStartPoint(*deliveries().back().update, position);
    pump();
    return taken;
  }

  /// What the present trace says, without and only with its remarks.
  std::vector<std::string> lines() const { return select(false); }
  std::vector<std::string> remarks() const { return select(true); }

  static KorvaniTools::TracePoint placeOf(const PointPtr& point) {
    return {point->coordinate().latitude, point->coordinate().longitude, point->level()};
  }
  static std::vector<KorvaniTools::TracePoint> placesOf(const std::vector<PointPtr>& points) {
    std::vector<KorvaniTools::TracePoint> places;
    for (const PointPtr& point : points) places.push_back(placeOf(point));
    return places;
  }
  static std::string routeLine(const PointPtr& from, const std::vector<PointPtr>& to) {
    return KorvaniTools::traceLine(
        KorvaniTools::RouteOperation{placeOf(from), placesOf(to), {}, false, false});
  }
  static std::string positionLine(const PointPtr& at) {
    return KorvaniTools::traceLine(KorvaniTools::PositionOperation{placeOf(at)});
  }
  static std::string destinationsLine(const std::vector<PointPtr>& to) {
    return KorvaniTools::traceLine(KorvaniTools::DestinationsOperation{placesOf(to)});
  }
  static std::string intersectLine(const PointPtr& at) {
    return KorvaniTools::traceLine(KorvaniTools::IntersectOperation{placeOf(at)});
  }

  const TemporaryFolder folder;
  Recorder recording{folder.path(), "walk"};

 private:
  std::vector<std::string> select(bool remarked) const {
    std::vector<std::string> selected;
    const auto files = recording.files();
    if (files.empty()) return selected;
    for (const std::string& line : linesOf(files.back().trace)) {
      if ((line.front() == '#') == remarked) selected.push_back(line);
    }
    return selected;
  }
};

}  // namespace KorvaniTest
