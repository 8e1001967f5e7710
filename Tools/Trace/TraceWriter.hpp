#pragma once

#include <string>

#include "Trace/TraceOperation.hpp"

namespace KorvaniTools {

/// One line of a trace file for `operation`, without its line feed. Members that have their
/// default value are left out. Numbers read back to the same double; reading the line back gives
/// an operation with the same values. A coordinate that is not finite becomes null, which readers
/// refuse: such a position has no place in a trace.
std::string traceLine(const TraceOperation& operation);

}  // namespace KorvaniTools
