#include "Support/Allocations.hpp"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {

thread_local std::int64_t allocationsOfThread = 0;

void* counted(void* block) {
  ++allocationsOfThread;
  if (!block) throw std::bad_alloc();
  return block;
}

}  // namespace

std::int64_t KorvaniBenchmarks::allocations() { return allocationsOfThread; }

std::int64_t KorvaniBenchmarks::heapBytes() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
}

// The array and nothrow forms of the library call these.
// NOLINTBEGIN(cppcoreguidelines-no-malloc): this is where memory comes from
void* operator new(std::size_t size) { return counted(std::malloc(size == 0 ? 1 : size)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  const auto step = static_cast<std::size_t>(alignment);
  return counted(std::aligned_alloc(step, (size + step - 1) / step * step));
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, std::align_val_t) noexcept { std::free(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { std::free(block); }
// NOLINTEND(cppcoreguidelines-no-malloc)
