#pragma once

// Internal. The trace of one building.

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Navigation/API/Tasks/IntersectionTask.hpp"
#include "Navigation/API/Tasks/ObstacleCheckTask.hpp"
#include "Navigation/API/Tasks/RoutingTask.hpp"
#include "Navigation/API/Tasks/SnappingTask.hpp"
#include "Navigation/Obstacles/ObstacleDenier.hpp"
#include "Recorder/KnownConfigs.hpp"
#include "Recorder/Problems.hpp"
#include "Recorder/RecordFile.hpp"
#include "Trace/TraceOperation.hpp"

namespace KorvaniRecorder {

// Writes what is about to happen, in the words of a trace file.
//
// A trace knows one routing at a time. A routing that is not that one becomes it by a `route` line,
// whether it starts or goes on; what goes on with the one known is a `position`. Where a trace
// cannot say the whole truth, a remark (a line that starts with #, which readers skip) stands
// before the line, so that who reads the trace knows where the replay may part from the app.
//
// What cannot be written is added to the problems, and remarked. One thread at a time.
class TraceLog {
 public:
  // Makes the file. `problems` has to outlive the log.
  TraceLog(const std::filesystem::path& file, const std::string& about, Problems& problems);

  // The task starts: it has been claimed and not worked yet.
  void add(const std::shared_ptr<KorvaniNavigation::RoutingTask>& task);
  void add(const KorvaniNavigation::SnappingTask& task);
  void add(const KorvaniNavigation::IntersectionTask& task);
  void add(const KorvaniNavigation::ObstacleCheckTask& task, KorvaniTools::TraceDenier denier);

  // Destinations are about to be replaced. Those of a routing that the trace does not know are in
  // its `route` line, later.
  void addDestinations(const std::shared_ptr<KorvaniNavigation::RoutingTask>& task,
                       const KorvaniNavigation::RoutingTask::Points& points);

  void addCancel();

  // The host lets a task go. For a replay, which has nothing else under way, cancelling comes to
  // the same.
  void addRemoval(const std::shared_ptr<KorvaniNavigation::Task>& task);

  // The owner of that control block has arrived: the trace knows no routing any more.
  void routingHasArrived(const std::shared_ptr<const void>& task);

  // Adds a problem, and remarks it in the trace.
  void complain(const std::string& problem);

 private:
  // A routing, and what the trace says of it.
  struct Routing {
    std::weak_ptr<KorvaniNavigation::RoutingTask> task;
    bool barrierFree = false;
    bool directions = false;
  };

  template <class T>
  bool isKnownRouting(const std::shared_ptr<T>& task) const;
  void startRouting(const std::shared_ptr<KorvaniNavigation::RoutingTask>& task);
  void remarkSwitches(const KorvaniNavigation::RoutingTask& task);
  std::optional<KorvaniTools::TracePoint> pointFor(
      const std::string& what, const std::shared_ptr<KorvaniNavigation::KRVNavPoint>& point);
  std::optional<std::vector<KorvaniTools::TracePoint>> pointsFor(
      const std::string& what, const KorvaniNavigation::RoutingTask::Points& points);
  void write(const KorvaniTools::TraceOperation& operation);
  void remark(const std::string& text);
  void append(const std::string& line);

  RecordFile file_;
  Problems& problems_;
  KnownConfigs configs_;
  Routing routing_;
  std::map<std::string, std::weak_ptr<KorvaniNavigation::ObstacleDenier>> creditDeniers_;
};

}  // namespace KorvaniRecorder
