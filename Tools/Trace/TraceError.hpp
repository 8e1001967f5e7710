#pragma once

#include <cstddef>
#include <string>

#include "Support/InputError.hpp"

namespace KorvaniTools {

/// What is wrong with a line of a trace file.
///
/// `what()` says all of it on one line that is safe for a terminal:
///
///     walk.trace.ndjson: line 12: level of at: found "two", expected an integer
class TraceError : public InputError {
 public:
  /// @param file the file's name as it was given
  /// @param line the number of the faulty line, from 1
  /// @param subject what the fault is about, e.g. "level of at"; may be empty
  TraceError(const std::string& file, std::size_t line, const std::string& subject,
             const std::string& found, const std::string& expected);

  std::size_t line() const { return line_; }

 private:
  std::size_t line_;
};

}  // namespace KorvaniTools
