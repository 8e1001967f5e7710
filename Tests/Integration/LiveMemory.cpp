#include "Integration/LiveMemory.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::int64_t> blocks{0};

void* counted(void* block) {
  if (!block) throw std::bad_alloc();
  ++blocks;
  return block;
}

void giveBack(void* block) noexcept {
  if (!block) return;
  --blocks;
  std::free(block);
}

void* alignedBlock(std::size_t size, std::align_val_t alignment) {
  const auto step = static_cast<std::size_t>(alignment);
  return counted(std::aligned_alloc(step, (size + step - 1) / step * step));
}

}  // namespace

std::int64_t KorvaniTest::liveBlocks() { return blocks; }

void* operator new(std::size_t size) { return counted(std::malloc(size == 0 ? 1 : size)); }
void* operator new[](std::size_t size) { return counted(std::malloc(size == 0 ? 1 : size)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  return alignedBlock(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return alignedBlock(size, alignment);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  void* block = std::malloc(size == 0 ? 1 : size);
  if (block) ++blocks;
  return block;
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* block, const std::nothrow_t&) noexcept { giveBack(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { giveBack(block); }
void operator delete(void* block) noexcept { giveBack(block); }
void operator delete[](void* block) noexcept { giveBack(block); }
void operator delete(void* block, std::size_t) noexcept { giveBack(block); }
void operator delete[](void* block, std::size_t) noexcept { giveBack(block); }
void operator delete(void* block, std::align_val_t) noexcept { giveBack(block); }
void operator delete[](void* block, std::align_val_t) noexcept { giveBack(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { giveBack(block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { giveBack(block); }
