#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Executor.hpp"
#include "Platform/Export.hpp"
#include "Platform/UUID.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class Navigation;

/// Base of everything the engine does for a host: made by the facade, started with `run()`,
/// answered through a completion handler.
///
/// An asynchronous task works on the global queue and delivers on the main queue; a synchronous
/// one does both on the thread that calls `run()`, and has delivered when `run()` returns. A
/// task that is run before any graph was provided waits: the notification
/// `NavigationGraphCreatedNotification` starts it. That observation is never given up, so a
/// task that once waited is started again by every later notification, unless it is running.
///
/// Threads: `run()` may be called from any thread, also from inside a handler, and on a task
/// that is running (it then does nothing). `running()` and `description()` may be read from any
/// thread.
///
/// Ownership: a task lives in a `std::shared_ptr`. The facade keeps it from its start to its
/// delivery, the background work while it lasts. For an asynchronous task the last of these
/// references is given up on the main thread, so what a handler has captured dies there. A
/// task that was cancelled and that nobody holds any more delivers nothing.
///
/// Subclasses supply `execute()`, which ends with `finish()`, and `done()`.
class KORVANI_API Task : public std::enable_shared_from_this<Task> {
 public:
  virtual ~Task();
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;

  /// Starts the task: marks it running, has the facade keep it and lets `execute()` run. Does
  /// nothing when it is running already; waits for the notification when there is no graph. A
  /// routing task that a snapping task is driving on just then starts right afterwards.
  void run();

  /// The same for who has to know whether it starts something, as for a protocol of what was
  /// done: `taken` (not empty) is called once this call has claimed the task, or is about to wait
  /// for something, and before any of the work. It is not called when the task is running already.
  /// @return whether it was called
  bool run(const std::function<void()>& taken);

  /// Whether the work goes on in the background and results are delivered on the main queue.
  bool async() const { return async_; }

  /// Whether the task has started and not yet finished.
  bool running() const { return *claim_ != Claim::none; }

  /// The task's identity, fresh and random for each task.
  const KorvaniPlatform::UUID& identifier() const { return identifier_; }

  /// The configuration bundle the task works with; absent once that is gone.
  std::shared_ptr<ConfigDependents> configDependents() const { return configDependents_.lock(); }

  /// The task's type and identity for logs, such as
  /// "KorvaniNavigation.RoutingTask, identifier: 2B7C...".
  std::string description() const;

  /// Two tasks are equal exactly when their identifiers are.
  friend bool operator==(const Task& a, const Task& b) { return a.identifier_ == b.identifier_; }
  friend bool operator!=(const Task& a, const Task& b) { return !(a == b); }

 protected:
  /// Who is at work on a task. Of several who want to be one gets the claim, and is alone with the
  /// task until it gives the claim up.
  enum class Claim {
    none,
    run,       ///< an execution
    borrowed,  ///< another task, which drives this one on
    awaited,   ///< the same, and an execution is to follow
    ending,    ///< an execution that has delivered, and no host's code any more
  };

  Task(std::weak_ptr<ConfigDependents> configDependents, bool async);

  /// The work. A subclass overrides it; the base version is a fatal error.
  virtual void execute();

  /// Hands the result to the host, once, on the thread that delivers. Does nothing here.
  virtual void done();

  /// Name of the class for `description()`, without its namespace.
  virtual std::string typeName() const { return "Task"; }

  /// Ends the task; called at the end of `execute()`. `done()`, the facade's letting go and the end
  /// of `running` follow: on the main queue for an asynchronous task that still exists then, at
  /// once otherwise.
  void finish();

  /// Delivers an intermediate result: on the main queue for an asynchronous task, at once
  /// otherwise.
  void notify(KorvaniPlatform::Job block) const;

  /// `run()` with a step in between, for a task that is to go on: `prepare` is called once this
  /// call has claimed the task (or is about to wait for the graph), before the work starts. When it
  /// returns false, nothing is started after all. The facade does not keep a task that the host has
  /// let go.
  /// @param own the caller's reference to this task; empty afterwards when the work has been
  ///     started, which takes it over
  /// @return whether `prepare` was called and returned true
  bool runAfter(const std::function<bool()>& prepare, std::shared_ptr<Task>& own);

  /// `run()` that does not wait: does nothing when there is no graph.
  void runUnlessGraphIsMissing();

  /// Has `block` run once `execute()` has returned: at once when the work ran on the main thread
  /// or synchronously, in a job of the main queue otherwise. It is dropped when the task is gone
  /// by then.
  void afterExecution(KorvaniPlatform::Job block);

  /// Called once after each `execute()`, on the thread that delivers, just before anything is
  /// delivered. Does nothing here. A subclass that goes on living between executions calls
  /// `release()` here: not earlier, or the results of its next execution might overtake these.
  virtual void executionEnded();

  /// Gives up the claim of an execution.
  void release() { *claim_ = Claim::none; }

  /// Takes the claim for another task; false when somebody else has it.
  bool borrow();

  /// Gives that claim up, and has an execution follow that was asked for meanwhile. Takes over the
  /// reference: unless this is the main thread, a job of the main queue ends it, which is queued
  /// before the claim is given up. So nothing that a later execution delivers can meet it.
  static void giveBack(std::shared_ptr<Task> task);

  /// Whether the host has had the facade let the task go, and has not run it since.
  bool isLetGo() const { return isLetGo_; }

  const std::weak_ptr<ConfigDependents>& weakConfigDependents() const { return configDependents_; }

 private:
  friend class Navigation;  // which marks tasks that hosts let go

  /// What one execution leaves to be done after it. Lives on the stack of the job.
  struct Execution;

  bool start(const std::function<bool()>& prepare, std::shared_ptr<Task>& own);
  void startOrFollow(const std::function<bool()>& prepare);
  void keep(const std::shared_ptr<Task>& own);
  bool claimForRun();
  bool haveExecutionFollow();
  Execution* currentExecution() const;
  static void perform(std::shared_ptr<Task> task);
  static void bringHome(std::shared_ptr<Task> task, Execution& execution);
  static void deliver(std::shared_ptr<Task> task, const std::vector<KorvaniPlatform::Job>& blocks,
                      const std::function<void(const std::weak_ptr<Task>&)>& end);
  void finalStep();
  void observeGraphCreation();
  void graphCreationFinished();

  std::weak_ptr<ConfigDependents> configDependents_;
  const bool async_;
  const std::shared_ptr<std::atomic<Claim>> claim_;  ///< shared, since it outlasts a reference
  std::atomic<bool> isLetGo_{false};                 ///< by the host, which has not run it since
  const KorvaniPlatform::UUID identifier_;
};

}  // namespace KorvaniNavigation
