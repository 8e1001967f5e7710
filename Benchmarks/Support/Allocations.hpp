#pragma once

#include <cstdint>

namespace KorvaniBenchmarks {

/// How often this thread has called `operator new` so far. The program's operators are replaced by
/// ones that count; they cost about a nanosecond more.
std::int64_t allocations();

/// Bytes that the program has got from the heap and not given back, as the C library counts them.
std::int64_t heapBytes();

}  // namespace KorvaniBenchmarks
