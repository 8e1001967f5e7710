#pragma once

// Internal. The locks behind the graph classes' indivisible accessors.
//
// A graph has many thousand objects, so a mutex in each would outweigh what it guards. Instead a
// fixed number of mutexes is shared, chosen by the address of the object: two objects seldom meet,
// and a lock is only ever held to copy or exchange a value.

#include <mutex>
#include <utility>

namespace KorvaniNavigation {

// The mutex that guards `object`. Never take a second one while holding one.
std::mutex& mutexOf(const void* object);

// A copy of `field` of `object`, read as one step.
template <class T>
T readGuarded(const void* object, const T& field) {
  std::lock_guard<std::mutex> lock(mutexOf(object));
  return field;
}

// Writes `field` of `object` as one step. The old value dies after the lock is released: it may
// be the last reference to an object whose end needs the same mutex.
template <class T>
void writeGuarded(const void* object, T& field, T value) {
  std::lock_guard<std::mutex> lock(mutexOf(object));
  using std::swap;
  swap(field, value);
}

}  // namespace KorvaniNavigation
