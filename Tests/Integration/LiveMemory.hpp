#pragma once

#include <cstdint>

namespace KorvaniTest {

/// How many blocks the whole program has got from `operator new` and not given back. A program that
/// links LiveMemory.cpp counts them all, on every thread.
std::int64_t liveBlocks();

}  // namespace KorvaniTest
