#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <istream>
#include <optional>
#include <string>

#include "Trace/TraceLine.hpp"

namespace KorvaniTools {

/// Opens the trace file at `path` (`NAME.trace.ndjson`).
/// @throws InputError when it cannot be read
std::ifstream openTrace(const std::filesystem::path& path);

/// Reads a trace line by line, so that what stands before a faulty line can be done first:
///
///     std::ifstream file = openTrace(path);
///     TraceReader reader(file, path);
///     while (const auto line = reader.next()) carryOut(*line);
///
/// Lines end with a line feed, one before it a carriage return counts as a blank. Blank lines
/// and lines that start with `#` are skipped, and counted.
class TraceReader {
 public:
  /// @param stream stays with the caller, who keeps it as long as the reader
  /// @param file the name that errors give the trace
  TraceReader(std::istream& stream, std::string file);

  /// The next line that says something; absent at the end.
  /// @throws TraceError when the line is malformed
  /// @throws InputError when the stream cannot be read further
  std::optional<TraceLine> next();

 private:
  std::istream& stream_;
  const std::string file_;
  std::size_t number_ = 0;
};

}  // namespace KorvaniTools
