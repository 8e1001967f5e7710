#include "Platform/MainQueue.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace KorvaniPlatform {

namespace {

// Earlier than any moment: jobs do not wait.
constexpr Duration kAtOnce = Duration::min();

// The longest single sleep, so that a far due time cannot overflow the deadline of the wait.
constexpr Duration kLongestSleep = std::chrono::hours(1);

Duration later(Duration start, Duration delay) {
  if (delay <= Duration::zero()) return start;
  return start > Duration::max() - delay ? Duration::max() : start + delay;
}

}  // namespace

class MainQueue::OneShotTimer final : public Timer {
 public:
  OneShotTimer(MainQueue& queue, TimerKey key) : queue_(queue), key_(std::move(key)) {}

  void invalidate() override {
    if (claim()) queue_.drop(key_);
  }

  bool isValid() const override { return valid_.load(); }

  // Takes the right to run or drop the job; true for exactly one caller.
  bool claim() { return valid_.exchange(false); }

 private:
  MainQueue& queue_;
  const TimerKey key_;
  std::atomic<bool> valid_{true};
};

MainQueue::MainQueue() : mainThread_(std::this_thread::get_id()) {
  setClockJumpHandler([this] {
    {
      const std::lock_guard lock(mutex_);
      promisedWake_.reset();
    }
    workArrived();
  });
}

void MainQueue::async(Job job) {
  if (!job) return;
  {
    const std::lock_guard lock(mutex_);
    jobs_.emplace_back().swap(job);
  }
  workArrived();
}

void MainQueue::execute(Job job) { async(takeJob(job)); }

std::shared_ptr<Timer> MainQueue::schedule(Duration delay, Job job) {
  std::shared_ptr<OneShotTimer> timer;
  {
    const std::lock_guard lock(mutex_);
    const TimerKey key(later(clock()->uptime(), delay), nextTimerNumber_++);
    timer = std::make_shared<OneShotTimer>(*this, key);
    ScheduledJob& scheduled = timers_[key];
    scheduled.timer = timer;
    scheduled.job.swap(job);
  }
  workArrived();
  return timer;
}

void MainQueue::drop(const TimerKey& key) {
  Job dropped;
  {
    const std::lock_guard lock(mutex_);
    const auto found = timers_.find(key);
    if (found == timers_.end()) return;
    // The captures belong to the main thread; another thread leaves them to the next pump.
    Job& target = isMainThread() ? dropped : discarded_.emplace_back();
    target.swap(found->second.job);
    timers_.erase(found);
  }
  workArrived();
}

void MainQueue::attach(std::shared_ptr<RunLoopHost> host) {
  {
    const std::lock_guard lock(mutex_);
    host_.swap(host);
    promisedWake_.reset();
  }
  workArrived();
}

bool MainQueue::enter() {
  const std::lock_guard lock(mutex_);
  if (serving_) return false;
  serving_ = true;
  promisedWake_.reset();
  mainThread_ = std::this_thread::get_id();
  return true;
}

void MainQueue::leave() {
  {
    const std::lock_guard lock(mutex_);
    serving_ = false;
  }
  workArrived();
}

void MainQueue::pump() {
  if (!enter()) return;
  pumpOnce();
  leave();
}

void MainQueue::runUntilIdle() {
  if (!enter()) return;
  do {
    pumpOnce();
  } while (hasWork());
  leave();
}

void MainQueue::run() {
  if (!enter()) return;
  do {
    pumpOnce();
  } while (waitForWork());
  leave();
}

void MainQueue::stop() {
  const std::lock_guard lock(mutex_);
  stopRequested_ = true;
  wake_.notify_all();
}

// The lists of the jobs at hand are kept from one pump to the next, since an empty one costs as
// much to make as a small job.
void MainQueue::pumpOnce() {
  std::unique_lock lock(mutex_);
  present_.swap(jobs_);
  dropping_.swap(discarded_);
  const std::uint64_t endNumber = nextTimerNumber_;
  const Duration now = clock()->uptime();
  lock.unlock();

  dropping_.clear();
  while (!present_.empty()) {
    const Job job = takeJob(present_.front());
    present_.pop_front();
    job();
  }
  while (fireNextTimer(now, endNumber)) {
  }
}

// Fires the first timer that is due and was scheduled before the one numbered `endNumber`; false
// when there is none.
bool MainQueue::fireNextTimer(Duration now, std::uint64_t endNumber) {
  ScheduledJob due;
  if (!takeDueTimer(now, endNumber, due)) return false;
  if (due.timer->claim() && due.job) due.job();
  return true;
}

bool MainQueue::takeDueTimer(Duration now, std::uint64_t endNumber, ScheduledJob& taken) {
  const std::lock_guard lock(mutex_);
  for (auto timer = timers_.begin(); timer != timers_.end(); ++timer) {
    const auto& [due, number] = timer->first;
    if (due > now) break;
    if (number >= endNumber) continue;
    taken.timer = timer->second.timer;
    taken.job.swap(timer->second.job);
    timers_.erase(timer);
    return true;
  }
  return false;
}

// The uptime at which a pump would find something; nothing when there is no work at all.
std::optional<Duration> MainQueue::nextWake() const {
  if (!jobs_.empty() || !discarded_.empty()) return kAtOnce;
  if (!timers_.empty()) return timers_.begin()->first.first;
  return std::nullopt;
}

bool MainQueue::hasWork() const {
  const std::lock_guard lock(mutex_);
  const std::optional<Duration> wake = nextWake();
  return wake && *wake <= clock()->uptime();
}

bool MainQueue::waitForWork() {
  std::unique_lock lock(mutex_);
  while (!stopRequested_) {
    const std::optional<Duration> wake = nextWake();
    if (!wake) {
      wake_.wait(lock);
      continue;
    }
    const std::shared_ptr<Clock> time = clock();
    const Duration now = time->uptime();
    if (*wake <= now) return true;
    if (time->advancesByItself()) {
      wake_.wait_for(lock, std::min(*wake - now, kLongestSleep));
    } else {
      wake_.wait(lock);
    }
  }
  stopRequested_ = false;
  return false;
}

// Calls to the host are made one at a time, without the lock: a thread that finds another one
// telling lets it tell once more, so that the last call always rests on the newest state.
void MainQueue::workArrived() {
  std::unique_lock lock(mutex_);
  wake_.notify_all();
  tellAgain_ = true;
  if (telling_) return;
  telling_ = true;
  while (tellAgain_) {
    tellAgain_ = false;
    tellHost(lock);
  }
  telling_ = false;
}

void MainQueue::tellHost(std::unique_lock<std::mutex>& lock) {
  if (host_ == nullptr || serving_) return;
  const std::optional<Duration> wake = nextWake();
  if (!wake || (promisedWake_ && *promisedWake_ <= *wake)) return;
  promisedWake_ = wake;
  const Duration now = clock()->uptime();
  std::shared_ptr<RunLoopHost> host = host_;
  lock.unlock();
  host->wakeUp(*wake <= now ? Duration::zero() : *wake - now);
  host.reset();
  lock.lock();
}

bool MainQueue::isMainThread() const { return mainThread_.load() == std::this_thread::get_id(); }

MainQueue& mainQueue() {
  static auto* const queue = new MainQueue;
  return *queue;
}

bool isMainThread() { return mainQueue().isMainThread(); }

}  // namespace KorvaniPlatform
