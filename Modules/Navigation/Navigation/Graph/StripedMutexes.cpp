#include "Navigation/Graph/StripedMutexes.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

namespace KorvaniNavigation {

namespace {

constexpr std::size_t kStripes = 64;

// A cache line each, so that threads on neighbouring stripes do not slow each other down.
struct alignas(64) Stripe {
  std::mutex mutex;
};

}  // namespace

std::mutex& mutexOf(const void* object) {
  // Leaked: objects of the graph may be touched while the process leaves.
  static auto* const stripes = new std::array<Stripe, kStripes>;
  // Heap addresses are multiples of 16; the multiplication spreads regular strides.
  const std::uint64_t address = reinterpret_cast<std::uintptr_t>(object) >> 4;
  const std::uint64_t mixed = address * 0x9E3779B97F4A7C15u;
  return (*stripes)[static_cast<std::size_t>(mixed >> 58)].mutex;
}

}  // namespace KorvaniNavigation
