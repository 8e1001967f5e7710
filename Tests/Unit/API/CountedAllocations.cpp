#include "Unit/API/CountedAllocations.hpp"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> callsOfNew{0};

}  // namespace

// All forms whose memory the two below give back: sanitizers bring their own of those that are
// left. NOLINTBEGIN(cppcoreguidelines-no-malloc): what new and delete are made of
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  ++callsOfNew;
  return std::malloc(std::max<std::size_t>(size, 1));
}
void* operator new(std::size_t size) {
  if (void* const memory = operator new(size, std::nothrow)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept { std::free(memory); }
// NOLINTEND(cppcoreguidelines-no-malloc)

namespace KorvaniTest {

std::size_t allocationCount() { return callsOfNew; }

}  // namespace KorvaniTest
