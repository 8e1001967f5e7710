#include "Recorder/Recorder.hpp"

#include <utility>

#include "Navigation/API/Navigation.hpp"
#include "Recorder/Recording.hpp"
#include "Recorder/TraceLog.hpp"

namespace KorvaniNavigation {

using KorvaniRecorder::Recording;
using KorvaniRecorder::TraceLog;
using KorvaniTools::TraceDenier;

namespace {

/// Runs a task that `write(trace, task)` writes once it is claimed.
template <class T, class Write>
void runWritten(Recording& recording, const std::shared_ptr<T>& task, Write write) {
  if (!task) return;
  task->run([&] {
    recording.add(task, [write](TraceLog& trace, const std::shared_ptr<Task>& started) {
      write(trace, std::static_pointer_cast<T>(started));
    });
  });
}

}  // namespace

Recorder::Recorder(std::filesystem::path folder, std::string name)
    : recording_(Recording::make(std::move(folder), std::move(name))) {}

Recorder::~Recorder() = default;

void Recorder::provideGraph(std::shared_ptr<KRVNavGraph> graph) {
  recording_->provide(graph);
  Navigation::sharedInstance().provideGraph(std::move(graph));
}

void Recorder::run(const std::shared_ptr<RoutingTask>& task) {
  runWritten(*recording_, task, [](TraceLog& trace, const auto& it) { trace.add(it); });
}

void Recorder::run(const std::shared_ptr<SnappingTask>& task) {
  runWritten(*recording_, task, [](TraceLog& trace, const auto& it) { trace.add(*it); });
}

void Recorder::run(const std::shared_ptr<IntersectionTask>& task) {
  runWritten(*recording_, task, [](TraceLog& trace, const auto& it) { trace.add(*it); });
}

void Recorder::run(const std::shared_ptr<ObstacleCheckTask>& task, Denier denier) {
  const TraceDenier kind =
      denier == Denier::byCredit ? TraceDenier::byCredit : TraceDenier::strength;
  runWritten(*recording_, task, [kind](TraceLog& trace, const auto& it) { trace.add(*it, kind); });
}

bool Recorder::updateStartPoint(const RoutingUpdateTask& update,
                                std::shared_ptr<KRVNavPoint> point) {
  return update.updateStartPoint(std::move(point), [&] {
    // Looked up only here, where the engine holds the task as well: the last reference to it must
    // not end on this thread.
    const auto task = update.routingTask();
    recording_->add(task, [](TraceLog& trace, const std::shared_ptr<Task>& it) {
      trace.add(std::static_pointer_cast<RoutingTask>(it));
    });
  });
}

void Recorder::updateDestinations(const std::shared_ptr<RoutingTask>& task,
                                  const RoutingTask::Points& destinations) {
  if (!task) return;
  recording_->add([&](TraceLog& trace) { trace.addDestinations(task, destinations); });
  task->updateDestinations(destinations);
}

void Recorder::removeTask(const std::shared_ptr<Task>& task) {
  recording_->add([&](TraceLog& trace) { trace.addRemoval(task); });
  Navigation::sharedInstance().removeTask(task);
}

void Recorder::cancelAllTasks() {
  recording_->add([](TraceLog& trace) { trace.addCancel(); });
  Navigation::sharedInstance().cancelAllTasks();
}

std::vector<Recorder::Files> Recorder::files() const { return recording_->files(); }

std::vector<std::string> Recorder::problems() const { return recording_->problems(); }

}  // namespace KorvaniNavigation
