#pragma once

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
/// must not ask the same object again.
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
    const std::lock_guard lock(mutex_);
    Form& form = formOf(&kTypeKey<T>);
    if (!form.object || form.stamp != stamp) form = {form.type, stamp, make()};
    return std::static_pointer_cast<const T>(form.object);
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
  };

  Form& formOf(const void* type) const {
    for (Form& form : forms_) {
      if (form.type == type) return form;
    }
    return forms_.emplace_back(Form{type, 0, nullptr});
  }

  mutable std::mutex mutex_;
  mutable std::vector<Form> forms_;
};

}  // namespace KorvaniCommon
