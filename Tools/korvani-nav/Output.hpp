#pragma once

#include <string>

namespace KorvaniTools {

/// Writes `text` to the file at `path`, or to standard output when `path` is empty or "-".
///
/// A file is written beside its place and then moved there, so that its place holds the old
/// contents or all of the new, never a part. What is not an ordinary file (a device, a pipe) is
/// written directly.
/// @throws InputError when it cannot be written
void writeOutput(const std::string& text, const std::string& path);

}  // namespace KorvaniTools
