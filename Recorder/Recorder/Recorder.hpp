#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Navigation/API/Tasks/IntersectionTask.hpp"
#include "Navigation/API/Tasks/ObstacleCheckTask.hpp"
#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/API/Tasks/RoutingUpdateTask.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Recorder/Export.hpp"

namespace KorvaniRecorder {
class Recording;
}

namespace KorvaniNavigation {

/// Writes down what an app asks of the engine while it asks it, as two files: the building, and a
/// trace. A bug report is these two files; `korvani-nav replay BUILDING TRACE` does the same again
/// and prints what the engine answered.
///
/// A host makes tasks with the facade as always, and calls the recorder where it would otherwise
/// call the engine:
///
///     Recorder recorder(folder, "2024-05-01");     // writes 2024-05-01.building.geojson
///     recorder.provideGraph(graph);                // and 2024-05-01.trace.ndjson
///     NotificationCenter::defaultCenter().post(NavigationGraphCreatedNotification);
///     auto task = navigation.routingTask(position, {gate}, [&](auto update, auto route, ...) {
///       if (update) recorder.updateStartPoint(*update, nextPosition());
///     });
///     recorder.run(task);
///
/// Each function does what the engine's of the same name does, with the same result, and writes a
/// line before that takes effect. So the line is in the file even when the app ends right there.
/// What the engine drops is not written: a position for a task that is working or has arrived, a
/// `run` of a task that is running. A task that waits for a graph is written when the graph is
/// announced and the task starts.
///
/// Configurations are changed as ever. Before each line the recorder compares all of them with
/// what the trace has said, and writes what has changed.
///
/// Files. They are made with the building: when a graph is provided through the recorder, or at
/// the first line on a graph that was provided without it. Files of their names are replaced, so
/// a name belongs to one run of the app. A graph with the contents of the one before goes on with
/// its files; another one starts a new pair, NAME-2 and so on, whose trace begins anew.
///
/// Trouble. Nothing that goes wrong with the files disturbs the app: the engine is called all the
/// same, nothing is thrown, and what went wrong is kept in `problems()`. A trace that can no
/// longer be written ends with its last whole line. A graph that a building file cannot hold
/// (`problems()` names what and where) gives a trace without building. Remarks in the trace (lines
/// that start with #) say where something was left out.
///
/// What a trace cannot tell:
/// - Things that overlap in time. A replay waits for each line before it reads the next. So it
///   does not show what hangs on a position that comes while another task works, or on speed.
///   Destinations that come during an execution come after it in a replay.
/// - Two routings at once. A replay follows one. Who goes back to the other gets it started anew
///   from its present position. So a replay never maps the positions of one onto the route of the
///   other, as the engine does when only one of them is the active one.
/// - Which points are nodes of the graph, and identifiers in general. Positions and destinations
///   are coordinates and levels.
/// - Changes of a routing's `barrierFree` and `directions` after its first run, which are
///   remarked, and deniers of the host's own class.
/// - A snapping task that is run again, or a credit that starts anew with another
///   `DefaultObstacleDenier`: a replay has a new snapper for each snap, and one denier of each
///   kind for each configuration. Both are remarked.
/// - What a host does without the recorder.
///
/// Threads: everything may be called from any thread, also from inside a handler. What several
/// threads do at once is written in some order.
/// Ownership: holds neither tasks nor graph. May be destroyed at any time; tasks go on.
/// Cost: a line is written and flushed with each call, about ten microseconds. A building is
/// written within `provideGraph`, about two seconds per million points and edges.
class KORVANI_RECORDER_API Recorder {
 public:
  /// Where a building and what was asked about it lie.
  struct Files {
    std::filesystem::path building;  ///< empty when it could not be written
    std::filesystem::path trace;
  };

  /// Which of the engine's deniers an obstacle check works with.
  enum class Denier {
    strength,  ///< `StrengthBasedObstacleDenier`, as in every check that the facade makes
    byCredit,  ///< `DefaultObstacleDenier`
  };

  /// A recorder that writes into `folder`, which has to exist, to files whose names begin with
  /// `name`. Nothing is written yet. Make it before the first task that waits for a graph.
  Recorder(std::filesystem::path folder, std::string name);
  ~Recorder();
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  /// Writes the building, then calls `Navigation::provideGraph`. Posting
  /// `NavigationGraphCreatedNotification` remains the host's business.
  void provideGraph(std::shared_ptr<KRVNavGraph> graph);

  /// Writes the task's inputs as they are now, and runs it. Does nothing without a task, as when
  /// the facade knew no configuration of that name.
  void run(const std::shared_ptr<RoutingTask>& task);
  void run(const std::shared_ptr<SnappingTask>& task);
  void run(const std::shared_ptr<IntersectionTask>& task);

  /// The same. A host that makes its own check says which denier it has given to it.
  void run(const std::shared_ptr<ObstacleCheckTask>& task, Denier denier = Denier::strength);

  /// Calls `RoutingUpdateTask::updateStartPoint`; the position is written if the task takes it.
  /// @return whether it did
  bool updateStartPoint(const RoutingUpdateTask& update, std::shared_ptr<KRVNavPoint> point);

  /// Writes the destinations, then calls `RoutingTask::updateDestinations`. Those of a task that
  /// was not run yet are written with its first run.
  void updateDestinations(const std::shared_ptr<RoutingTask>& task,
                          const RoutingTask::Points& destinations);

  /// Calls `Navigation::removeTask`. The end of the routing that goes on is written as `cancel`,
  /// which comes to the same in a replay.
  void removeTask(const std::shared_ptr<Task>& task);

  /// Writes that, and calls `Navigation::cancelAllTasks`. A replay provides its graph again at
  /// once, whatever the host does next.
  void cancelAllTasks();

  /// The files made so far, in that order; the last ones are being written to.
  std::vector<Files> files() const;

  /// What went wrong so far, in that order: what and where. Of very many the first hundred.
  std::vector<std::string> problems() const;

 private:
  const std::shared_ptr<KorvaniRecorder::Recording> recording_;
};

}  // namespace KorvaniNavigation
