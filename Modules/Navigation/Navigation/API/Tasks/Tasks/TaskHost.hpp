#pragma once

// Internal. What a task asks of the facade, so that tasks need not know it.

#include <memory>

namespace KorvaniNavigation {

class Task;

/// Keeper of the tasks that have started and not yet finished. Any thread may call it.
class TaskHost {
 public:
  /// Keeps a task that starts. A task that is kept already is not kept twice.
  virtual void appendTask(const std::shared_ptr<Task>& task) = 0;

  /// Lets a task go that has finished; does nothing when it is not kept.
  virtual void removeTask(const std::shared_ptr<Task>& task) = 0;

 protected:
  ~TaskHost() = default;
};

/// The facade in this role. Defined by the facade.
TaskHost& taskHost();

}  // namespace KorvaniNavigation
