#pragma once

// Internal. What a recorder keeps: the files of each building, and what waits for a building.

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Navigation/API/Tasks/Tasks/Task.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Recorder/Problems.hpp"
#include "Recorder/Recorder.hpp"
#include "Recorder/TraceLog.hpp"

namespace KorvaniRecorder {

// Sees to it that whatever is written finds the trace of the building that the facade has at that
// moment. Any thread may call it, also from inside a handler: no code of the host's runs while its
// mutex is held.
class Recording {
 public:
  using Task = KorvaniNavigation::Task;
  using Graph = KorvaniNavigation::KRVNavGraph;
  using Files = KorvaniNavigation::Recorder::Files;
  // Writes a task that starts.
  using Entry = std::function<void(TraceLog&, const std::shared_ptr<Task>&)>;

  Recording(std::filesystem::path folder, std::string name);

  // A recording that hears what is announced. Observers are called in the order of registration,
  // so one made before a task waits for the graph writes the task before it starts.
  static std::shared_ptr<Recording> make(std::filesystem::path folder, std::string name);

  // Writes the building, unless it is the one written last, contents and all.
  void provide(const std::shared_ptr<Graph>& graph);

  // A task has been claimed, or begins to wait for a graph. In the latter case `entry` is called
  // each time a graph is announced, as the task is started then.
  void add(const std::shared_ptr<Task>& task, Entry entry);

  // Has the present trace, if there is one, written to.
  void add(const std::function<void(TraceLog&)>& write);

  std::vector<Files> files() const;
  std::vector<std::string> problems() const;

 private:
  struct Waiting {
    std::weak_ptr<Task> task;
    Entry entry;
  };

  void keepWaiting(const std::shared_ptr<Task>& task, Entry entry);
  void graphAnnounced();
  // Writes the tasks that start now, and gives all that wait. They are let go without the mutex,
  // since a task's end is the host's business.
  std::vector<std::shared_ptr<Task>> writeWaiting(const std::shared_ptr<Graph>& graph);
  TraceLog* logOf(const std::shared_ptr<Graph>& graph);
  void open(const std::shared_ptr<Graph>& graph);
  void begin(const std::string& building, const std::vector<std::string>& faults);
  bool writeBuilding(const std::filesystem::path& file, const std::string& text);

  const std::filesystem::path folder_;
  const std::string name_;
  mutable std::mutex mutex_;
  Problems problems_;
  std::vector<Files> files_;
  std::vector<Waiting> waiting_;
  std::weak_ptr<Graph> graph_;
  // A mark of the building's text, so that the text need not be kept; absent when it has none.
  std::optional<std::size_t> fingerprint_;
  std::optional<TraceLog> log_;
};

}  // namespace KorvaniRecorder
