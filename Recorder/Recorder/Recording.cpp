#include "Recorder/Recording.hpp"

#include <algorithm>
#include <system_error>
#include <utility>

#include "Navigation/API/Constants.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/NotificationCenter.hpp"
#include "Recorder/BuildingWriter.hpp"
#include "Recorder/GraphFaults.hpp"
#include "Recorder/RecordFile.hpp"

namespace KorvaniRecorder {

using KorvaniNavigation::Navigation;
using KorvaniPlatform::isMainThread;
using KorvaniPlatform::mainQueue;
using KorvaniPlatform::Notification;
using KorvaniPlatform::NotificationCenter;

namespace {

/// Whether `known` refers to that object. Nothing is locked, so no reference ends here.
template <class T>
bool refersTo(const std::weak_ptr<T>& known, const std::shared_ptr<T>& object) {
  return !known.owner_before(object) && !object.owner_before(known);
}

}  // namespace

Recording::Recording(std::filesystem::path folder, std::string name)
    : folder_(std::move(folder)), name_(std::move(name)) {}

std::shared_ptr<Recording> Recording::make(std::filesystem::path folder, std::string name) {
  auto recording = std::make_shared<Recording>(std::move(folder), std::move(name));
  auto& center = NotificationCenter::defaultCenter();
  center.addObserver(recording, &Recording::graphAnnounced,
                     KorvaniNavigation::NavigationGraphCreatedNotification);
  center.addObserver(
      recording, KorvaniNavigation::NavigationRoutingTaskDestinationReachedNotification,
      [self = recording.get()](const Notification& notification) {
        self->add([&](TraceLog& trace) { trace.routingHasArrived(notification.object); });
      });
  return recording;
}

void Recording::provide(const std::shared_ptr<Graph>& graph) {
  const std::lock_guard lock(mutex_);
  if (graph) open(graph);
}

void Recording::add(const std::shared_ptr<Task>& task, Entry entry) {
  const auto graph = Navigation::sharedInstance().graph();
  const std::lock_guard lock(mutex_);
  if (graph) {
    entry(*logOf(graph), task);
  } else {
    keepWaiting(task, std::move(entry));
  }
}

void Recording::add(const std::function<void(TraceLog&)>& write) {
  const std::lock_guard lock(mutex_);
  if (log_) write(*log_);
}

void Recording::keepWaiting(const std::shared_ptr<Task>& task, Entry entry) {
  std::erase_if(waiting_, [](const Waiting& waiting) { return waiting.task.expired(); });
  // An asynchronous task that waits twice is still running when it is started the second time. A
  // synchronous one is started, and ends, as often as it waits.
  const bool known =
      task->async() && std::any_of(waiting_.begin(), waiting_.end(), [&](const Waiting& waiting) {
        return refersTo(waiting.task, task);
      });
  if (!known) waiting_.push_back({task, std::move(entry)});
}

void Recording::graphAnnounced() {
  const auto graph = Navigation::sharedInstance().graph();
  if (!graph) return;
  auto alive = writeWaiting(graph);
  // These may be the last references to a task, which has to end on the main thread.
  if (!isMainThread()) mainQueue().async([alive = std::move(alive)] {});
}

std::vector<std::shared_ptr<Recording::Task>> Recording::writeWaiting(
    const std::shared_ptr<Graph>& graph) {
  std::vector<std::shared_ptr<Task>> alive;
  const std::lock_guard lock(mutex_);
  TraceLog& trace = *logOf(graph);
  for (const Waiting& waiting : waiting_) {
    const auto task = waiting.task.lock();
    if (!task) continue;
    alive.push_back(task);
    if (!task->running()) waiting.entry(trace, task);
  }
  return alive;
}

std::vector<Recording::Files> Recording::files() const {
  const std::lock_guard lock(mutex_);
  return files_;
}

std::vector<std::string> Recording::problems() const {
  const std::lock_guard lock(mutex_);
  return problems_.list();
}

TraceLog* Recording::logOf(const std::shared_ptr<Graph>& graph) {
  if (!log_ || !refersTo(graph_, graph)) open(graph);
  return &*log_;
}

void Recording::open(const std::shared_ptr<Graph>& graph) {
  const auto faults = graphFaults(*graph);
  const auto building = faults.empty() ? buildingText(*graph) : BuildingText();
  const auto fingerprint = std::hash<std::string>()(building.text);
  const bool isKnown = log_ && faults.empty() && fingerprint_ == fingerprint;
  const bool isSameFaultyOne = log_ && !faults.empty() && !fingerprint_ && refersTo(graph_, graph);
  graph_ = graph;
  if (isKnown || isSameFaultyOne) return;
  fingerprint_.reset();
  if (faults.empty()) fingerprint_ = fingerprint;
  begin(building.text, faults);
  if (building.edgesWithoutDistance == 0) return;
  log_->complain(
      "building: edges of length 0 were written without a length, which they get back in a replay "
      "that begins with levelHeight 0: " +
      std::to_string(building.edgesWithoutDistance));
}

void Recording::begin(const std::string& building, const std::vector<std::string>& faults) {
  std::string stem = name_;
  if (!files_.empty()) stem.append("-").append(std::to_string(files_.size() + 1));
  Files files{folder_ / (stem + ".building.geojson"), folder_ / (stem + ".trace.ndjson")};
  // The trace comes first: it is where problems with the building are remarked.
  const std::string about = "KorvaniNavigation " KORVANI_RECORDER_VERSION ", building file " +
                            files.building.filename().string();
  log_.emplace(files.trace, about, problems_);
  for (const std::string& fault : faults) log_->complain("building: " + fault);
  const bool written = faults.empty() && writeBuilding(files.building, building);
  if (!written) {
    // Neither half a building may lie beside the trace, nor one of an earlier recording.
    std::error_code ignored;
    std::filesystem::remove(files.building, ignored);
    files.building.clear();
  }
  files_.push_back(std::move(files));
}

bool Recording::writeBuilding(const std::filesystem::path& file, const std::string& text) {
  const auto problem = RecordFile(file).append(text);
  if (problem) log_->complain(*problem);
  return !problem;
}

}  // namespace KorvaniRecorder
