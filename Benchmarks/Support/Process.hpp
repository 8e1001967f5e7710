#pragma once

#include <optional>
#include <string>
#include <vector>

namespace KorvaniBenchmarks {

/// Runs a program to its end and gives what it wrote to standard output; absent when it cannot be
/// started or fails. `command` is the program's file and its arguments.
std::optional<std::string> outputOf(const std::vector<std::string>& command);

}  // namespace KorvaniBenchmarks
