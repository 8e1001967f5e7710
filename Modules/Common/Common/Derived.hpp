#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

#include "Common/Revision.hpp"

namespace KorvaniCommon {

/// What has been computed from an object and is kept beside it until the object changes.
///
/// Whoever needs a compiled form (adjacency in arrays, a grid of walls) owns its type and knows how
/// to make it; the object owns the storage. So the classes of the graph need not know what is made
/// of them, and the forms need no cache of their own that would have to be told of ends and
/// changes.
///
///     const auto grid = derived.get<WallGrid>(stamp, [&] {
///       return std::make_shared<const WallGrid>(edgesOf(obstacles));
///     });
///
/// At most one form of each type is kept. Readers keep what they took for as long as they hold it,
/// also when another one has taken its place since.
///
/// Thread safety: any thread at any time. A form is made by the first who asks; others wait. `make`
/// must not ask the same object for the same form.
class Derived {
 public:
  Derived() = default;
  Derived(const Derived&) = delete;
  Derived& operator=(const Derived&) = delete;

  /// The form of type T at `stamp`; `make()`, which gives a `std::shared_ptr` to it (not null), is
  /// called when there is none of that stamp. Take the stamp before reading what the form is made
  /// from: a change in between then has the form made once too often, and is never missed.
  template <class T, class Make>
  std::shared_ptr<const T> get(RevisionStamp stamp, Make make) const {
    return get<T>(stamp, make, [] { return false; });
  }

  /// The same for a form that takes long to make: `make()` may give it up and return null, and so
  /// may, as soon as `givesUp()` is true, those who wait for what another one makes. They get null
  /// then. A form that was given up is made from the beginning by the next who wants it.
  template <class T, class Make, class GivesUp>
  std::shared_ptr<const T> get(RevisionStamp stamp, Make make, GivesUp givesUp) const {
    constexpr auto kPatience = std::chrono::milliseconds(1);
    const void* const type = &kTypeKey<T>;
    std::unique_lock lock(mutex_);
    for (;;) {
      const Form& form = formOf(type);
      if (form.object && form.stamp == stamp) return std::static_pointer_cast<const T>(form.object);
      if (!form.isBeingMade) break;
      if (givesUp()) return nullptr;
      made_.wait_for(lock, kPatience);
    }
    const Making making(*this, lock, type);
    std::shared_ptr<const T> object = making.unlocked(make);
    if (object) formOf(type) = {type, stamp, object, true};
    return object;
  }

  /// The form of type T at `stamp` if it is made already; null otherwise. For who can do without.
  template <class T>
  std::shared_ptr<const T> ready(RevisionStamp stamp) const {
    const std::lock_guard lock(mutex_);
    for (const Form& form : forms_) {
      if (form.type != &kTypeKey<T>) continue;
      return form.stamp == stamp ? std::static_pointer_cast<const T>(form.object) : nullptr;
    }
    return nullptr;
  }

  /// Whether nothing was asked for yet.
  bool isEmpty() const {
    const std::lock_guard lock(mutex_);
    return forms_.empty();
  }

 private:
  /// A constant for each type: its address tells types apart without type information at run time.
  template <class T>
  static inline const char kTypeKey = 0;

  struct Form {
    const void* type;
    RevisionStamp stamp;
    std::shared_ptr<const void> object;
    bool isBeingMade = false;
  };

  /// While a form is made the lock is open: others may want other forms, or not want to wait.
  class Making {
   public:
    Making(const Derived& derived, std::unique_lock<std::mutex>& lock, const void* type)
        : derived_(derived), lock_(lock), type_(type) {
      derived_.formOf(type_).isBeingMade = true;
      lock_.unlock();
    }
    ~Making() {
      if (!lock_.owns_lock()) lock_.lock();
      derived_.formOf(type_).isBeingMade = false;
      derived_.made_.notify_all();
    }
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;

    template <class Make>
    auto unlocked(Make& make) const {
      auto object = make();
      lock_.lock();
      return object;
    }

   private:
    const Derived& derived_;
    std::unique_lock<std::mutex>& lock_;
    const void* type_;
  };

  Form& formOf(const void* type) const {
    for (Form& form : forms_) {
      if (form.type == type) return form;
    }
    return forms_.emplace_back(Form{type, 0, nullptr, false});
  }

  mutable std::mutex mutex_;
  mutable std::condition_variable made_;
  mutable std::vector<Form> forms_;
};

}  // namespace KorvaniCommon
