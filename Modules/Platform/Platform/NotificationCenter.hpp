#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Platform/Export.hpp"
#include "Platform/Value.hpp"

/// Announcements by name, from whoever posts them to whoever registered.
///
///     auto& center = NotificationCenter::defaultCenter();
///     center.addObserver(task, &Task::graphCreationFinished, NavigationGraphCreatedNotification);
///     center.post(NavigationGraphCreatedNotification);
///
/// Guarantees
/// - A post calls the observers that were registered for its name when it began, on the posting
///   thread, in the order of their registration, and returns when all have been called. One that
///   was removed meanwhile, or is gone, is skipped.
/// - Registering twice delivers twice.
/// - Handlers may add and remove observers and post; no lock is held while they run.
/// - Observers are held weakly: one that is destroyed leaves by itself. It is kept alive while its
///   handler runs. A handler must not itself hold its observer, which would then never go.
///
/// Thread safety: every function may be called from any thread. Removing an observer does not wait
/// for a call to it that is under way on another thread.

namespace KorvaniPlatform {

/// What an observer receives.
struct KORVANI_API Notification {
  /// The name under which it was posted.
  std::string name;
  /// The sender, when the poster named one; otherwise null.
  std::shared_ptr<const void> object;
  /// Further information; empty when there is none.
  Dictionary userInfo;
};

class KORVANI_API NotificationCenter {
 public:
  using Handler = std::function<void(const Notification&)>;

  NotificationCenter();
  NotificationCenter(const NotificationCenter&) = delete;
  NotificationCenter& operator=(const NotificationCenter&) = delete;
  ~NotificationCenter();

  /// The centre that the engine uses. Made on first use and never destroyed.
  static NotificationCenter& defaultCenter();

  /// Registers `handler` for notifications of that name; with a `sender`, only for those whose
  /// object it is. `observer` decides how long: a null one registers nothing.
  void addObserver(const std::shared_ptr<void>& observer, const std::string& name, Handler handler,
                   const void* sender = nullptr);

  /// Registers a member function without parameters, from any sender.
  template <class T, class S>
  requires std::derived_from<T, S>
  void addObserver(const std::shared_ptr<T>& observer, void (S::*selector)(),
                   const std::string& name) {
    T* target = observer.get();
    addObserver(observer, name, [target, selector](const Notification&) { (target->*selector)(); });
  }

  /// Ends all registrations of an observer, under all names. The pointer is compared with the one
  /// the observer was registered with and never followed, so destructors may pass `this`; with
  /// several base classes it must be the same base. Unknown ones are ignored.
  void removeObserver(const void* observer);

  /// Ends the observer's registrations for one name.
  void removeObserver(const void* observer, const std::string& name);

  /// Delivers a notification; see above.
  void post(const std::string& name, std::shared_ptr<const void> object = nullptr,
            Dictionary userInfo = {});

  /// How many registrations for that name have a living observer.
  std::size_t observerCount(const std::string& name) const;

 private:
  struct Registration;
  using Registrations = std::vector<std::shared_ptr<Registration>>;

  static void removeFrom(Registrations& registrations, const void* observer,
                         Registrations& removed);
  void forgetGone(const std::string& name, Registrations& gone);

  mutable std::mutex mutex_;
  std::map<std::string, Registrations> registrations_;
};

}  // namespace KorvaniPlatform
