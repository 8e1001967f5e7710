#include "Platform/ManualClock.hpp"

namespace KorvaniPlatform {

ManualClock::ManualClock(Duration uptime, Date date) : startUptime_(uptime), startDate_(date) {}

Duration ManualClock::uptime() const { return startUptime_ + Duration(elapsed_.load()); }

Date ManualClock::date() const { return startDate_ + Duration(elapsed_.load()); }

bool ManualClock::advancesByItself() const { return false; }

void ManualClock::advance(Duration duration) {
  if (duration <= Duration::zero()) return;
  elapsed_.fetch_add(duration.count());
  announceClockJump();
}

}  // namespace KorvaniPlatform
