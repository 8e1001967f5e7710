#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <thread>
#include <type_traits>

namespace KorvaniCommon {

/// A small plain value that is read far more often than it is written.
///
/// Readers take no lock and write no memory, so threads that read the same value do not slow each
/// other down; a reader that a writer crosses reads again. (The technique is known as a sequence
/// lock.) Where a value is more than plain bytes, or writers are many, use Guarded.
///
///     SeqLocked<CLLocation> location(here);
///     location.store(there);
///     CLLocation seen = location.load();
///
/// Guarantees: `load` and `store` are atomic with respect to each other, from any thread; a thread
/// that sees a value also sees what its writer did before. A writer that stops in the middle makes
/// the others wait. Neither copied nor moved.
template <class T>
class SeqLocked {
  static_assert(std::is_trivially_copyable_v<T>, "values are copied word by word");
  static_assert(sizeof(T) % sizeof(std::uint64_t) == 0, "values are whole words");
  static constexpr std::size_t kWords = sizeof(T) / sizeof(std::uint64_t);
  using Words = std::array<std::uint64_t, kWords>;

 public:
  explicit SeqLocked(const T& value) { write(value); }

  SeqLocked(const SeqLocked&) = delete;
  SeqLocked& operator=(const SeqLocked&) = delete;

  // A word that was just written carries with it that the version was made odd before.
  T load() const {
    for (;;) {
      const std::uint32_t before = version_.load(std::memory_order_acquire);
      Words words{};
      for (std::size_t i = 0; i < kWords; ++i) words[i] = words_[i].load(std::memory_order_acquire);
      const bool isWhole = before % 2 == 0 && version_.load(std::memory_order_relaxed) == before;
      if (isWhole) return std::bit_cast<T>(words);
      std::this_thread::yield();
    }
  }

  void store(const T& value) {
    std::uint32_t version = version_.load(std::memory_order_relaxed);
    while (version % 2 != 0 ||
           !version_.compare_exchange_weak(version, version + 1, std::memory_order_acquire)) {
      std::this_thread::yield();
      version = version_.load(std::memory_order_relaxed);
    }
    write(value);
    version_.store(version + 2, std::memory_order_release);
  }

 private:
  void write(const T& value) {
    const auto words = std::bit_cast<Words>(value);
    for (std::size_t i = 0; i < kWords; ++i) words_[i].store(words[i], std::memory_order_release);
  }

  std::atomic<std::uint32_t> version_{0};  // odd while a value is being written
  std::array<std::atomic<std::uint64_t>, kWords> words_;
};

}  // namespace KorvaniCommon
