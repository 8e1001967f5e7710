#include "Navigation/API/Tasks/Tasks/Task.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <regex>
#include <thread>

#include "Navigation/API/Constants.hpp"
#include "Navigation/API/Navigation.hpp"
#include "Navigation/Graph/KRVNavGraph.hpp"
#include "Platform/GlobalQueue.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/NotificationCenter.hpp"
#include "Support/MainLoop.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniPlatform::isMainThread;
using KorvaniPlatform::mainQueue;
using KorvaniPlatform::NotificationCenter;
using KorvaniTest::pumpUntil;

/// Counts what happens to it, and can be told to wait inside its work.
class ProbeTask : public Task {
 public:
  explicit ProbeTask(bool async)
      : Task(std::static_pointer_cast<ConfigDependents>(
                 Navigation::sharedInstance().defaultConfig()),
             async) {}

  void execute() override {
    executedOnMainThread = isMainThread();
    ++executions;
    if (duringExecution) duringExecution(*this);
    if (finishes) finish();
  }

  void done() override {
    deliveredOnMainThread = isMainThread();
    runningInsideDone = running();
    ++deliveries;
    if (handler) handler();
  }

  using Task::notify;
  void finishNow() { finish(); }

  std::function<void(ProbeTask&)> duringExecution;
  std::function<void()> handler;
  bool finishes = true;
  std::atomic<int> executions{0};
  std::atomic<int> deliveries{0};
  std::atomic<bool> executedOnMainThread{false};
  std::atomic<bool> deliveredOnMainThread{false};
  std::atomic<bool> runningInsideDone{false};

 protected:
  std::string typeName() const override { return "ProbeTask"; }
};

/// A gate that work waits at until the test opens it.
class Gate {
 public:
  void open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    opened_.notify_all();
  }
  void wait() {
    std::unique_lock lock(mutex_);
    opened_.wait(lock, [&] { return open_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable opened_;
  bool open_ = false;
};

class TaskTest : public testing::Test {
 protected:
  TaskTest() { mainQueue().runUntilIdle(); }
  ~TaskTest() override {
    KorvaniPlatform::joinGlobalQueue();
    mainQueue().runUntilIdle();
    Navigation::sharedInstance().cancelAllTasks();
  }

  static void provideGraph() {
    Navigation::sharedInstance().provideGraph(std::make_shared<KRVNavGraph>());
  }
  static void announceGraph() {
    NotificationCenter::defaultCenter().post(NavigationGraphCreatedNotification);
  }
};

TEST_F(TaskTest, RunWithoutAGraphDoesNothingUntilTheGraphIsAnnounced) {
  const auto task = std::make_shared<ProbeTask>(false);
  task->run();
  EXPECT_EQ(task->executions, 0);
  EXPECT_FALSE(task->running());
  provideGraph();
  EXPECT_EQ(task->executions, 0) << "providing alone starts nothing";
  announceGraph();
  EXPECT_EQ(task->executions, 1);
  EXPECT_EQ(task->deliveries, 1);
}

TEST_F(TaskTest, ATaskThatOnceWaitedIsStartedByEveryLaterAnnouncement) {
  const auto task = std::make_shared<ProbeTask>(false);
  task->run();
  provideGraph();
  announceGraph();
  announceGraph();
  EXPECT_EQ(task->executions, 2);
}

TEST_F(TaskTest, ATaskThatWaitedTwiceIsStartedTwiceByOneAnnouncementWhenItsFirstRunIsOver) {
  const auto task = std::make_shared<ProbeTask>(false);
  task->run();
  task->run();
  provideGraph();
  announceGraph();
  EXPECT_EQ(task->executions, 2) << "two registrations, and a synchronous run ends in between";
}

TEST_F(TaskTest, AnAnnouncementDoesNotStartATaskThatIsRunning) {
  Gate gate;
  const auto task = std::make_shared<ProbeTask>(true);
  task->duringExecution = [&](ProbeTask&) { gate.wait(); };
  task->run();
  task->run();
  provideGraph();
  announceGraph();
  announceGraph();
  gate.open();
  ASSERT_TRUE(pumpUntil([&] { return task->deliveries > 0 && !task->running(); }));
  EXPECT_EQ(task->executions, 1);
}

TEST_F(TaskTest, ATaskThatIsGoneIsNotStartedByTheAnnouncement) {
  const auto& center = NotificationCenter::defaultCenter();
  const auto before = center.observerCount(NavigationGraphCreatedNotification);
  std::atomic<int> executions{0};
  {
    const auto task = std::make_shared<ProbeTask>(false);
    task->duringExecution = [&](ProbeTask&) { ++executions; };
    task->run();
    EXPECT_EQ(center.observerCount(NavigationGraphCreatedNotification), before + 1);
  }
  EXPECT_EQ(center.observerCount(NavigationGraphCreatedNotification), before);
  provideGraph();
  announceGraph();
  EXPECT_EQ(executions, 0);
}

TEST_F(TaskTest, RunningTwiceWhileTheFirstRunGoesOnStartsTheWorkOnce) {
  provideGraph();
  Gate gate;
  const auto task = std::make_shared<ProbeTask>(true);
  task->duringExecution = [&](ProbeTask&) { gate.wait(); };
  task->run();
  EXPECT_TRUE(task->running());
  task->run();
  gate.open();
  ASSERT_TRUE(pumpUntil([&] { return !task->running(); }));
  EXPECT_EQ(task->executions, 1);
  EXPECT_EQ(task->deliveries, 1);
}

TEST_F(TaskTest, WhoAsksIsToldOnceTheTaskIsClaimedAndBeforeItWorks) {
  provideGraph();
  const auto task = std::make_shared<ProbeTask>(false);
  int told = 0;
  EXPECT_TRUE(task->run([&] {
    ++told;
    EXPECT_TRUE(task->running());
    EXPECT_EQ(task->executions, 0);
  }));
  EXPECT_EQ(told, 1);
  EXPECT_EQ(task->deliveries, 1);
}

TEST_F(TaskTest, WhoAsksIsNotToldWhenTheTaskIsRunning) {
  provideGraph();
  const auto task = std::make_shared<ProbeTask>(true);
  task->finishes = false;
  EXPECT_TRUE(task->run([] {}));
  EXPECT_FALSE(task->run([] { ADD_FAILURE() << "it is running"; }));
}

TEST_F(TaskTest, WhoAsksIsToldThatTheTaskWaitsForTheGraphAndNotAgain) {
  const auto task = std::make_shared<ProbeTask>(false);
  int told = 0;
  EXPECT_TRUE(task->run([&] { ++told; }));
  EXPECT_FALSE(task->running());
  provideGraph();
  announceGraph();
  EXPECT_EQ(task->executions, 1);
  EXPECT_EQ(told, 1);
}

TEST_F(TaskTest, ASynchronousTaskDeliversAtOnceWhenItFinishes) {
  provideGraph();
  const auto task = std::make_shared<ProbeTask>(false);
  task->finishes = false;
  task->duringExecution = [](ProbeTask& itself) {
    itself.finishNow();
    EXPECT_EQ(itself.deliveries, 1);
    EXPECT_FALSE(itself.running());
  };
  task->run();
  EXPECT_EQ(task->deliveries, 1);
}

TEST_F(TaskTest, ASynchronousTaskHasDeliveredAndLeftTheFacadeWhenRunReturns) {
  provideGraph();
  auto task = std::make_shared<ProbeTask>(false);
  task->run();
  EXPECT_EQ(task->deliveries, 1);
  EXPECT_FALSE(task->running());
  const std::weak_ptr<ProbeTask> weak = task;
  task.reset();
  EXPECT_TRUE(weak.expired()) << "nobody keeps it";
}

TEST_F(TaskTest, AnAsynchronousTaskWorksInTheBackgroundAndDeliversOnTheMainThread) {
  provideGraph();
  const auto task = std::make_shared<ProbeTask>(true);
  task->run();
  ASSERT_TRUE(pumpUntil([&] { return task->deliveries == 1; }));
  EXPECT_FALSE(task->executedOnMainThread);
  EXPECT_TRUE(task->deliveredOnMainThread);
  EXPECT_TRUE(task->runningInsideDone) << "a task runs until it has delivered";
  EXPECT_FALSE(task->running());
}

TEST_F(TaskTest, TheFacadeKeepsARunningTaskThatTheHostHasLetGo) {
  provideGraph();
  std::atomic<bool> delivered{false};
  {
    const auto task = std::make_shared<ProbeTask>(true);
    task->handler = [&] { delivered = true; };
    task->run();
  }
  EXPECT_TRUE(pumpUntil([&] { return delivered.load(); }));
}

TEST_F(TaskTest, ACancelledTaskThatNobodyHoldsDeliversNothing) {
  for (int i = 0; i < 50; ++i) {
    provideGraph();
    Gate gate;
    std::atomic<bool> delivered{false};
    std::weak_ptr<ProbeTask> weak;
    {
      const auto task = std::make_shared<ProbeTask>(true);
      task->duringExecution = [&](ProbeTask&) { gate.wait(); };
      task->handler = [&] { delivered = true; };
      weak = task;
      task->run();
    }
    Navigation::sharedInstance().cancelAllTasks();
    gate.open();
    ASSERT_TRUE(pumpUntil([&] { return weak.expired(); }));
    mainQueue().runUntilIdle();
    EXPECT_FALSE(delivered);
  }
}

TEST_F(TaskTest, ACancelledTaskThatTheHostHoldsDeliversAsUsual) {
  provideGraph();
  Gate gate;
  const auto task = std::make_shared<ProbeTask>(true);
  task->duringExecution = [&](ProbeTask&) { gate.wait(); };
  task->run();
  Navigation::sharedInstance().cancelAllTasks();
  gate.open();
  EXPECT_TRUE(pumpUntil([&] { return task->deliveries == 1 && !task->running(); }));
}

TEST_F(TaskTest, WhatAHandlerHasCapturedDiesOnTheMainThread) {
  struct Captured {
    explicit Captured(std::atomic<int>& where) : diedOn(where) {}
    ~Captured() { diedOn = isMainThread() ? 1 : 2; }
    std::atomic<int>& diedOn;
  };
  for (int i = 0; i < 50; ++i) {
    provideGraph();
    std::atomic<int> diedOn{0};
    {
      auto captured = std::make_shared<Captured>(diedOn);
      const auto task = std::make_shared<ProbeTask>(true);
      task->handler = [captured] {};
      task->run();
    }
    if (i % 2 == 0) Navigation::sharedInstance().cancelAllTasks();
    ASSERT_TRUE(pumpUntil([&] { return diedOn != 0; }));
    EXPECT_EQ(diedOn, 1);
  }
}

TEST_F(TaskTest, AFinishedTaskCanBeRunAgainWithTheSameIdentifier) {
  provideGraph();
  const auto task = std::make_shared<ProbeTask>(true);
  const auto identifier = task->identifier();
  task->run();
  ASSERT_TRUE(pumpUntil([&] { return !task->running(); }));
  task->run();
  ASSERT_TRUE(pumpUntil([&] { return !task->running(); }));
  EXPECT_EQ(task->deliveries, 2);
  EXPECT_EQ(task->identifier(), identifier);
}

TEST_F(TaskTest, AHandlerMayRunItsTaskOnlyAfterItHasReturned) {
  provideGraph();
  const auto task = std::make_shared<ProbeTask>(false);
  task->handler = [&] { task->run(); };
  task->run();
  EXPECT_EQ(task->executions, 1) << "inside the handler the task is still running";
}

TEST_F(TaskTest, ATaskCanFinishAfterItsWorkHasReturned) {
  provideGraph();
  class LateTask : public ProbeTask {
   public:
    LateTask() : ProbeTask(true) { finishes = false; }
    void complete() { finish(); }
  };
  const auto task = std::make_shared<LateTask>();
  task->run();
  ASSERT_TRUE(pumpUntil([&] { return task->executions == 1; }));
  KorvaniPlatform::joinGlobalQueue();
  mainQueue().runUntilIdle();
  EXPECT_TRUE(task->running());
  task->complete();
  ASSERT_TRUE(pumpUntil([&] { return task->deliveries == 1; }));
  EXPECT_FALSE(task->running());
}

TEST_F(TaskTest, NotifyRunsOnTheMainQueueForAnAsynchronousTaskAndAtOnceOtherwise) {
  provideGraph();
  std::atomic<int> onMain{0};
  const auto note = [&](ProbeTask& task) {
    task.notify([&] { onMain += isMainThread() ? 1 : 100; });
  };
  const auto background = std::make_shared<ProbeTask>(true);
  background->duringExecution = note;
  background->run();
  ASSERT_TRUE(pumpUntil([&] { return background->deliveries == 1; }));
  EXPECT_EQ(onMain, 1);
  const auto synchronous = std::make_shared<ProbeTask>(false);
  synchronous->duringExecution = note;
  synchronous->run();
  EXPECT_EQ(onMain, 2);
}

TEST_F(TaskTest, TwoTasksAreEqualOnlyWhenTheyAreTheSame) {
  const auto one = std::make_shared<ProbeTask>(false);
  const auto other = std::make_shared<ProbeTask>(false);
  EXPECT_TRUE(*one == *one);
  EXPECT_TRUE(*one != *other);
}

TEST_F(TaskTest, DescribesItselfWithItsTypeAndIdentifier) {
  const auto task = std::make_shared<ProbeTask>(false);
  EXPECT_EQ(task->description(),
            "KorvaniNavigation.ProbeTask, identifier: " + task->identifier().uuidString());
  EXPECT_TRUE(
      std::regex_match(task->description(),
                       std::regex("KorvaniNavigation\\.ProbeTask, identifier: "
                                  "[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}")));
}

TEST_F(TaskTest, StartingFromSeveralThreadsAtOnceStartsTheWorkOnce) {
  provideGraph();
  for (int round = 0; round < 20; ++round) {
    Gate gate;
    const auto task = std::make_shared<ProbeTask>(true);
    task->duringExecution = [&](ProbeTask&) { gate.wait(); };
    std::vector<std::thread> starters;
    for (int i = 0; i < 4; ++i) starters.emplace_back([&] { task->run(); });
    for (auto& starter : starters) starter.join();
    gate.open();
    ASSERT_TRUE(pumpUntil([&] { return !task->running(); }));
    EXPECT_EQ(task->executions, 1);
  }
}

TEST_F(TaskTest, FiftyTasksAtOnceEachDeliverExactlyOnceAndOnTheMainThread) {
  provideGraph();
  std::vector<std::shared_ptr<ProbeTask>> tasks;
  for (int i = 0; i < 50; ++i) tasks.push_back(std::make_shared<ProbeTask>(true));
  for (const auto& task : tasks) task->run();
  ASSERT_TRUE(pumpUntil([&] {
    return std::all_of(tasks.begin(), tasks.end(), [](auto& task) { return !task->running(); });
  }));
  for (const auto& task : tasks) {
    EXPECT_EQ(task->executions, 1);
    EXPECT_EQ(task->deliveries, 1);
    EXPECT_TRUE(task->deliveredOnMainThread);
  }
}

TEST_F(TaskTest, EverythingWorksOnTheMainLoopAloneWhenTheHostHasNoThreads) {
  KorvaniPlatform::setGlobalExecutor(std::make_shared<KorvaniPlatform::MainQueueExecutor>());
  provideGraph();
  const auto task = std::make_shared<ProbeTask>(true);
  task->run();
  EXPECT_EQ(task->executions, 0) << "asynchronous still means later";
  mainQueue().runUntilIdle();
  EXPECT_EQ(task->executions, 1);
  EXPECT_EQ(task->deliveries, 1);
  EXPECT_FALSE(task->running());
  KorvaniPlatform::setGlobalExecutor(nullptr);
}

/// A task whose author has forgotten the work.
class UnfinishedTask : public Task {
 public:
  UnfinishedTask() : Task(std::weak_ptr<ConfigDependents>(), false) {}
};

TEST(TaskDeathTest, ATaskWithoutWorkEndsTheProcess) {
  EXPECT_DEATH(
      {
        Navigation::sharedInstance().provideGraph(std::make_shared<KRVNavGraph>());
        std::make_shared<UnfinishedTask>()->run();
      },
      "fatal error: KorvaniNavigation\\.Task\\.execute: Implementation missing, override in "
      "subclass! \\(Modules/Navigation/Navigation/API/Tasks/Tasks\\)");
}

}  // namespace
}  // namespace KorvaniNavigation
