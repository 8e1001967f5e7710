#include "Recorder/TraceLog.hpp"

#include <cmath>

#include "Common/CommonModule.hpp"
#include "Navigation/API/ConfigDependents.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Trace/TraceWriter.hpp"

namespace KorvaniRecorder {

using KorvaniNavigation::IntersectionTask;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::Navigation;
using KorvaniNavigation::ObstacleCheckTask;
using KorvaniNavigation::RoutingTask;
using KorvaniNavigation::SnappingTask;
using KorvaniNavigation::Task;
using KorvaniTools::TraceDenier;
using KorvaniTools::TraceOperation;
using KorvaniTools::TracePoint;

namespace {

/// Whether both belong to one object, whichever part of it they point to.
template <class A, class B>
bool sameOwner(const A& a, const B& b) {
  return !a.owner_before(b) && !b.owner_before(a);
}

/// The name of the task's configuration; absent for the main one.
std::optional<std::string> configOf(const Task& task) {
  const auto bundle = task.configDependents();
  if (!bundle || bundle->configName() == KorvaniCommon::kMainConfigName) return {};
  return bundle->configName();
}

/// Text on one line, since a line feed would end the remark.
std::string oneLine(std::string text) {
  for (char& letter : text) {
    if (letter == '\n' || letter == '\r') letter = ' ';
  }
  return text;
}

const char* word(bool value) { return value ? "true" : "false"; }

}  // namespace

TraceLog::TraceLog(const std::filesystem::path& file, const std::string& about, Problems& problems)
    : file_(file), problems_(problems) {
  remark(about);
}

template <class T>
bool TraceLog::isKnownRouting(const std::shared_ptr<T>& task) const {
  return task && sameOwner(routing_.task, task);
}

void TraceLog::add(const std::shared_ptr<RoutingTask>& task) {
  if (!isKnownRouting(task)) return startRouting(task);
  const auto point = pointFor("position", task->point());
  if (!point) return;
  remarkSwitches(*task);
  write(KorvaniTools::PositionOperation{*point});
}

void TraceLog::startRouting(const std::shared_ptr<RoutingTask>& task) {
  // Whatever comes of it, what follows does not belong to the routing known so far.
  routing_ = {};
  const auto from = pointFor("route", task->point());
  const auto to = pointsFor("route", task->possibleDestinations());
  if (!from || !to) return;
  routing_ = {task, task->barrierFree(), task->directions()};
  write(KorvaniTools::RouteOperation{*from, *to, configOf(*task), routing_.barrierFree,
                                     routing_.directions});
}

void TraceLog::remarkSwitches(const RoutingTask& task) {
  const bool barrierFree = task.barrierFree();
  const bool directions = task.directions();
  if (barrierFree == routing_.barrierFree && directions == routing_.directions) return;
  routing_.barrierFree = barrierFree;
  routing_.directions = directions;
  remark(std::string("from here on the app's routing has barrierFree ") + word(barrierFree) +
         " and directions " + word(directions) + "; a replay goes on as before");
}

void TraceLog::add(const SnappingTask& task) {
  if (const auto at = pointFor("snap", task.point())) {
    if (task.originalPoint()) remark("this task ran before; a replay makes a new one");
    write(KorvaniTools::SnapOperation{*at, configOf(task)});
  }
}

void TraceLog::add(const IntersectionTask& task) {
  if (const auto at = pointFor("intersect", task.navigationPoint())) {
    write(KorvaniTools::IntersectOperation{*at, task.onOriginalGraph()});
  }
}

void TraceLog::add(const ObstacleCheckTask& task, TraceDenier denier) {
  const auto at = pointFor("check", task.point());
  if (!at) return;
  const auto config = configOf(task);
  if (denier == TraceDenier::byCredit) {
    const auto [entry, isFirst] =
        creditDeniers_.try_emplace(config.value_or(std::string()), task.obstacleDenier());
    if (!isFirst && !sameOwner(entry->second, task.obstacleDenier())) {
      entry->second = task.obstacleDenier();
      remark("this denier is another one; a replay goes on with the credit of the one before");
    }
  }
  write(KorvaniTools::CheckOperation{*at, config, denier});
}

void TraceLog::addDestinations(const std::shared_ptr<RoutingTask>& task,
                               const RoutingTask::Points& points) {
  if (!isKnownRouting(task)) return;
  const auto to = pointsFor("destinations", points);
  if (!to) return;
  if (task->running()) {
    remark("these came while the routing was working; a replay has them after it");
  }
  write(KorvaniTools::DestinationsOperation{*to});
}

void TraceLog::addCancel() {
  routing_ = {};
  write(KorvaniTools::CancelOperation{});
}

void TraceLog::addRemoval(const std::shared_ptr<Task>& task) {
  if (!isKnownRouting(task)) return;
  remark("the app let the routing go");
  addCancel();
}

void TraceLog::routingHasArrived(const std::shared_ptr<const void>& task) {
  if (isKnownRouting(task)) routing_ = {};
}

std::optional<TracePoint> TraceLog::pointFor(const std::string& what,
                                             const std::shared_ptr<KRVNavPoint>& point) {
  if (!point) {
    complain(what + ": there is no point; left out");
    return {};
  }
  const auto coordinate = point->coordinate();
  if (std::isfinite(coordinate.latitude) && std::isfinite(coordinate.longitude)) {
    return TracePoint{coordinate.latitude, coordinate.longitude, point->level()};
  }
  complain(what + ": found a coordinate that is not finite, expected degrees; left out");
  return {};
}

std::optional<std::vector<TracePoint>> TraceLog::pointsFor(const std::string& what,
                                                           const RoutingTask::Points& points) {
  std::vector<TracePoint> result;
  for (const auto& each : points) {
    const auto point = pointFor(what, each);
    if (!point) return {};
    result.push_back(*point);
  }
  return result;
}

void TraceLog::write(const TraceOperation& operation) {
  std::vector<std::string> problems;
  const auto changes = configs_.changes(Navigation::sharedInstance().navigationConfigs(), problems);
  for (const std::string& problem : problems) complain(problem);
  for (const auto& change : changes) append(KorvaniTools::traceLine(change));
  append(KorvaniTools::traceLine(operation));
}

void TraceLog::complain(const std::string& problem) {
  problems_.add(problem);
  remark(problem);
}

void TraceLog::remark(const std::string& text) { append("# " + oneLine(text)); }

void TraceLog::append(const std::string& line) {
  if (auto problem = file_.append(line + '\n')) {
    problems_.add(*std::move(problem) + "; the trace ends before it");
  }
}

}  // namespace KorvaniRecorder
