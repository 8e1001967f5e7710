// A host's own main loop, on Linux: file descriptors and poll. An application that already has
// such a loop attaches the engine to it with the class `Waker` and one more descriptor to poll.

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "Platform/GlobalQueue.hpp"
#include "Platform/MainQueue.hpp"

namespace {

using KorvaniPlatform::Duration;
using KorvaniPlatform::globalQueue;
using KorvaniPlatform::mainQueue;

// All that the engine needs of a loop: a timer that makes it pump. A time of zero would disarm the
// descriptor, so "at once" is one nanosecond.
class Waker : public KorvaniPlatform::RunLoopHost {
 public:
  ~Waker() override { close(descriptor); }

  void wakeUp(Duration after) override {
    const Duration::rep wait = after.count() > 0 ? after.count() : 1;
    const itimerspec time{{0, 0}, {wait / 1'000'000'000, wait % 1'000'000'000}};
    timerfd_settime(descriptor, 0, &time, nullptr);
  }

  const int descriptor = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
};

// Reading empties the timer, so that it can become readable again. There is nothing to read when
// the queue has just set it anew, which does no harm: the pump follows either way.
void acknowledge(int timer) {
  std::uint64_t expirations = 0;
  [[maybe_unused]] const ssize_t size = read(timer, &expirations, sizeof expirations);
}

// The host's loop: its own events (here only the request to end) beside the engine's.
void loop(const Waker& waker, int quit) {
  pollfd descriptors[] = {{quit, POLLIN, 0}, {waker.descriptor, POLLIN, 0}};
  while (poll(descriptors, 2, -1) >= 0) {
    if (descriptors[0].revents != 0) return;
    acknowledge(waker.descriptor);
    mainQueue().pump();
  }
}

}  // namespace

int main() {
  const auto waker = std::make_shared<Waker>();
  const int quit = eventfd(0, EFD_CLOEXEC);
  mainQueue().attach(waker);

  globalQueue().execute([] {
    std::puts("background: working");
    mainQueue().async([] { std::puts("main: the background job is done"); });
  });
  mainQueue().schedule(std::chrono::milliseconds(200), [quit] {
    std::puts("main: the timer fired, leaving");
    eventfd_write(quit, 1);
  });
  loop(*waker, quit);

  mainQueue().attach(nullptr);
  close(quit);
  return 0;
}
