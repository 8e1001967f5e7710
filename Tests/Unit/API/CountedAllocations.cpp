#include "Unit/API/CountedAllocations.hpp"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> callsOfNew{0};

}  // namespace

// NOLINTBEGIN(cppcoreguidelines-no-malloc): what new and delete are made of
void* operator new(std::size_t size) {
  ++callsOfNew;
  if (void* const memory = std::malloc(std::max<std::size_t>(size, 1))) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
// NOLINTEND(cppcoreguidelines-no-malloc)

namespace KorvaniTest {

std::size_t allocationCount() { return callsOfNew; }

}  // namespace KorvaniTest
