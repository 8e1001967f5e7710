#pragma once

/// Counts how often the program asks for memory. A program that is linked with this has its
/// operators new and delete replaced.

#include <cstddef>

namespace KorvaniTest {

/// Calls of operator new so far, of all threads.
std::size_t allocationCount();

}  // namespace KorvaniTest
