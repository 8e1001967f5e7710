#include "Platform/NotificationCenter.hpp"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <utility>

namespace KorvaniPlatform {

struct NotificationCenter::Registration {
  std::weak_ptr<void> observer;
  const void* address = nullptr;
  const void* sender = nullptr;
  Handler handler;
  std::atomic<bool> removed{false};

  bool accepts(const Notification& notification) const {
    return sender == nullptr || sender == notification.object.get();
  }
};

// Handlers, and what they captured, may do anything when they are destroyed. Whatever leaves the
// lists is therefore moved into a local one that ends after the lock.

NotificationCenter::NotificationCenter() = default;

NotificationCenter::~NotificationCenter() = default;

NotificationCenter& NotificationCenter::defaultCenter() {
  static auto* const center = new NotificationCenter;
  return *center;
}

void NotificationCenter::addObserver(const std::shared_ptr<void>& observer, const std::string& name,
                                     Handler handler, const void* sender) {
  if (observer == nullptr || !handler) return;
  auto registration = std::make_shared<Registration>();
  registration->observer = observer;
  registration->address = observer.get();
  registration->sender = sender;
  registration->handler = std::move(handler);

  Registrations gone;
  const std::lock_guard lock(mutex_);
  forgetGone(name, gone);
  registrations_[name].push_back(std::move(registration));
}

void NotificationCenter::removeFrom(Registrations& registrations, const void* observer,
                                    Registrations& removed) {
  const auto kept = std::stable_partition(
      registrations.begin(), registrations.end(),
      [&](const std::shared_ptr<Registration>& entry) { return entry->address != observer; });
  for (auto entry = kept; entry != registrations.end(); ++entry) (*entry)->removed = true;
  removed.insert(removed.end(), std::move_iterator(kept), std::move_iterator(registrations.end()));
  registrations.erase(kept, registrations.end());
}

void NotificationCenter::removeObserver(const void* observer) {
  Registrations removed;
  const std::lock_guard lock(mutex_);
  for (auto& [name, registrations] : registrations_) {
    removeFrom(registrations, observer, removed);
  }
}

void NotificationCenter::removeObserver(const void* observer, const std::string& name) {
  Registrations removed;
  const std::lock_guard lock(mutex_);
  const auto found = registrations_.find(name);
  if (found != registrations_.end()) removeFrom(found->second, observer, removed);
}

// Called with the lock held.
void NotificationCenter::forgetGone(const std::string& name, Registrations& gone) {
  const auto found = registrations_.find(name);
  if (found == registrations_.end()) return;
  Registrations& registrations = found->second;
  const auto living = std::stable_partition(
      registrations.begin(), registrations.end(),
      [](const std::shared_ptr<Registration>& entry) { return !entry->observer.expired(); });
  gone.insert(gone.end(), std::move_iterator(living), std::move_iterator(registrations.end()));
  registrations.erase(living, registrations.end());
}

void NotificationCenter::post(const std::string& name, std::shared_ptr<const void> object,
                              Dictionary userInfo) {
  Registrations receivers;
  {
    Registrations gone;
    const std::lock_guard lock(mutex_);
    forgetGone(name, gone);
    const auto found = registrations_.find(name);
    if (found != registrations_.end()) receivers = found->second;
  }
  const Notification notification{name, std::move(object), std::move(userInfo)};
  for (const std::shared_ptr<Registration>& receiver : receivers) {
    const std::shared_ptr<void> observer = receiver->observer.lock();
    if (observer == nullptr || receiver->removed || !receiver->accepts(notification)) continue;
    receiver->handler(notification);
  }
}

std::size_t NotificationCenter::observerCount(const std::string& name) const {
  const std::lock_guard lock(mutex_);
  const auto found = registrations_.find(name);
  if (found == registrations_.end()) return 0;
  return static_cast<std::size_t>(std::count_if(
      found->second.begin(), found->second.end(),
      [](const std::shared_ptr<Registration>& entry) { return !entry->observer.expired(); }));
}

}  // namespace KorvaniPlatform
