#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Trace/TraceOperation.hpp"

namespace KorvaniTools {

/// A line of a trace: where it stands and what it says.
struct TraceLine {
  std::size_t number = 0;  ///< from 1; lines that say nothing count as well
  TraceOperation operation;
};

/// Reads what the line `text` says; errors name it line `number` of `file`.
///
/// null counts as absent, and 2.0 is the integer 2. Members that the operation does not have are
/// ignored. Settings come in the order of their names.
/// @throws TraceError when it is not JSON, not a known operation, or a member is missing or of
///     another type
TraceLine parseTraceLine(std::string_view text, const std::string& file, std::size_t number);

}  // namespace KorvaniTools
