#include "Navigation/API/Tasks/Tasks/Task.hpp"

#include <utility>

#include "Navigation/API/Constants.hpp"
#include "Navigation/API/Tasks/Tasks/TaskHost.hpp"
#include "Navigation/Graph/GraphSource.hpp"
#include "Platform/FatalError.hpp"
#include "Platform/GlobalQueue.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/NotificationCenter.hpp"

namespace KorvaniNavigation {

using KorvaniPlatform::globalQueue;
using KorvaniPlatform::isMainThread;
using KorvaniPlatform::Job;
using KorvaniPlatform::mainQueue;
using KorvaniPlatform::NotificationCenter;

/// Executions nest: a task may run a synchronous one from its own `execute()`.
struct Task::Execution {
  const Task* task;
  Execution* outer;
  bool finished = false;
  std::vector<Job> deliveries = {};
};

namespace {

/// The innermost execution of this thread, a `Task::Execution`.
thread_local void* innermostExecution = nullptr;

}  // namespace

Task::Task(std::weak_ptr<ConfigDependents> configDependents, bool async)
    : configDependents_(std::move(configDependents)),
      async_(async),
      claim_(std::make_shared<std::atomic<Claim>>(Claim::none)),
      identifier_(KorvaniPlatform::UUID::random()) {}

Task::~Task() { NotificationCenter::defaultCenter().removeObserver(this); }

void Task::run() {
  run([] {});
}

bool Task::run(const std::function<void()>& taken) {
  bool isPrepared = false;
  startOrFollow([&] {
    if (isPrepared) return true;
    isPrepared = true;
    isLetGo_ = false;
    taken();
    return true;
  });
  return isPrepared;
}

/// Starts the work, or has it follow what a borrower of the claim is doing. While the task is at
/// work by itself nothing is started.
void Task::startOrFollow(const std::function<bool()>& prepare) {
  auto own = shared_from_this();
  bool isRefused = false;
  const auto prepareOnce = [&] {
    isRefused = !prepare();
    return !isRefused;
  };
  for (;;) {
    if (runAfter(prepareOnce, own) || isRefused) return;
    switch (claim_->load()) {
      case Claim::none:
      case Claim::ending:
        continue;  // given up meanwhile, or about to be
      case Claim::borrowed:
        // Before the borrower can have the execution follow.
        if (!prepare()) return;
        keep(own);
        if (haveExecutionFollow()) return;
        continue;
      case Claim::run:
      case Claim::awaited:
        // Who runs a task again that it has let go gets what the task is working on.
        if (isLetGo_ && prepare()) keep(own);
        return;
    }
  }
}

/// Has the facade keep the task, unless the host has let it go.
void Task::keep(const std::shared_ptr<Task>& own) {
  if (!isLetGo_) taskHost().appendTask(own);
  // Looked at again: the host may have let the task go between the two.
  if (isLetGo_) taskHost().removeTask(own);
}

bool Task::claimForRun() {
  Claim none = Claim::none;
  return claim_->compare_exchange_strong(none, Claim::run);
}

bool Task::borrow() {
  Claim none = Claim::none;
  return claim_->compare_exchange_strong(none, Claim::borrowed);
}

bool Task::haveExecutionFollow() {
  Claim borrowed = Claim::borrowed;
  return claim_->compare_exchange_strong(borrowed, Claim::awaited);
}

void Task::giveBack(std::shared_ptr<Task> task) {
  const auto claim = task->claim_;
  const std::weak_ptr<Task> weak = task;
  if (!isMainThread()) mainQueue().async([task = std::move(task)] {});
  Claim borrowed = Claim::borrowed;
  if (claim->compare_exchange_strong(borrowed, Claim::none)) return;
  mainQueue().async([weak, claim] {
    *claim = Claim::none;
    if (const auto alive = weak.lock()) {
      alive->startOrFollow([&] { return !alive->isLetGo_; });
    }
  });
}

bool Task::runAfter(const std::function<bool()>& prepare, std::shared_ptr<Task>& own) {
  if (running()) return false;
  if (graphSource().graph()) return start(prepare, own);
  if (!prepare()) return false;
  observeGraphCreation();
  return true;
}

void Task::runUnlessGraphIsMissing() {
  if (!graphSource().graph()) return;
  auto own = shared_from_this();
  start([] { return true; }, own);
}

bool Task::start(const std::function<bool()>& prepare, std::shared_ptr<Task>& own) {
  // Of several threads that come here at once only one starts the work.
  if (!claimForRun()) return false;
  if (!prepare()) {
    release();
    return false;
  }
  keep(own);
  if (async_) {
    globalQueue().execute(
        [self = std::exchange(own, nullptr)]() mutable { perform(std::move(self)); });
  } else {
    perform(std::exchange(own, nullptr));
  }
  return true;
}

void Task::observeGraphCreation() {
  NotificationCenter::defaultCenter().addObserver(shared_from_this(), &Task::graphCreationFinished,
                                                  NavigationGraphCreatedNotification);
}

void Task::graphCreationFinished() { run(); }

Task::Execution* Task::currentExecution() const {
  auto* execution = static_cast<Execution*>(innermostExecution);
  while (execution && execution->task != this) execution = execution->outer;
  return execution;
}

void Task::perform(std::shared_ptr<Task> task) {
  Execution execution{task.get(), static_cast<Execution*>(innermostExecution)};
  innermostExecution = &execution;
  task->execute();
  innermostExecution = execution.outer;
  if (task->async_) {
    bringHome(std::move(task), execution);
    return;
  }
  task->executionEnded();
  for (const Job& block : execution.deliveries) block();
}

void Task::bringHome(std::shared_ptr<Task> task, Execution& execution) {
  const bool finished = execution.finished;
  const auto finalStepNow = [finished](const std::weak_ptr<Task>& weak) {
    const auto alive = finished ? weak.lock() : nullptr;
    if (alive) alive->finalStep();
  };
  if (isMainThread()) {
    deliver(std::move(task), execution.deliveries, [&](const std::weak_ptr<Task>& weak) {
      if (finished) mainQueue().async([weak, finalStepNow] { finalStepNow(weak); });
    });
    return;
  }
  mainQueue().async([task = std::move(task), blocks = std::move(execution.deliveries),
                     finalStepNow]() mutable { deliver(std::move(task), blocks, finalStepNow); });
}

void Task::deliver(std::shared_ptr<Task> task, const std::vector<Job>& blocks,
                   const std::function<void(const std::weak_ptr<Task>&)>& end) {
  // The work's own reference ends here, on the main thread; whether anybody else still wants
  // the results decides about what follows.
  const std::weak_ptr<Task> weak = task;
  task.reset();
  if (const auto alive = weak.lock()) alive->executionEnded();
  for (const Job& block : blocks) {
    if (const auto alive = weak.lock()) block();
  }
  end(weak);
}

void Task::finalStep() {
  done();
  // In this order a run that another thread starts now waits for the end, and is kept.
  *claim_ = Claim::ending;
  taskHost().removeTask(shared_from_this());
  release();
}

void Task::execute() {
  KorvaniPlatform::fatalError(
      "KorvaniNavigation.Task.execute: Implementation missing, override in subclass!",
      "Modules/Navigation/Navigation/API/Tasks/Tasks");
}

void Task::done() {}

void Task::executionEnded() {}

void Task::finish() {
  if (!async_) {
    finalStep();
  } else if (Execution* execution = currentExecution()) {
    // The work's thread owns the task until its work has returned.
    execution->finished = true;
  } else {
    notify([weak = weak_from_this()] {
      if (const auto alive = weak.lock()) alive->finalStep();
    });
  }
}

void Task::notify(Job block) const {
  if (async_) {
    mainQueue().async(std::move(block));
  } else {
    block();
  }
}

void Task::afterExecution(Job block) {
  if (Execution* execution = currentExecution()) {
    execution->deliveries.push_back(std::move(block));
  } else {
    notify([weak = weak_from_this(), block = std::move(block)] {
      if (const auto alive = weak.lock()) block();
    });
  }
}

std::string Task::description() const {
  return "KorvaniNavigation." + typeName() + ", identifier: " + identifier_.uuidString();
}

}  // namespace KorvaniNavigation
