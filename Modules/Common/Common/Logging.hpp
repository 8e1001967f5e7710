#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "Platform/Export.hpp"

/// Leveled log lines, for people who look into what a module decided.
///
/// A line is logged when its level is at or below the threshold and its module is switched on.
/// At first no module is, and the threshold holds debug, verbose and test lines back. The text
/// is given as a function and built only for lines that are logged, so a line that the
/// threshold holds back costs one atomic read:
///
///     KRVSwiftLogging::setLoggingEnabled("Parking", true);
///     setLogThreshold(LogLevel::debug);
///     KRVDDLogDebug([&] { return "space " + std::to_string(number) + " is free"; }, "Parking");
///
/// Lines go to standard error as "[debug] Parking: space 7 is free", or to the host's sink.
///
/// Thread safety: everything here may be called from any thread. No lock is held while a text
/// is built or a sink runs; both may log.
namespace KorvaniCommon {

/// How much a line matters. A larger number means more detail.
enum class LogLevel : int {
  error = 0,    ///< something that should not happen
  warning = 1,  ///< something questionable
  info = 2,     ///< rare events worth knowing
  debug = 3,    ///< decisions
  verbose = 4,  ///< details, item by item
  test = 5,     ///< timings
};

/// Name of a level in lower case, as the lines on standard error show it.
KORVANI_API std::string_view nameOf(LogLevel level);

/// The highest level that is logged. At first `LogLevel::info`, so debug, verbose and test
/// lines are off.
KORVANI_API LogLevel logThreshold();
KORVANI_API void setLogThreshold(LogLevel threshold);

/// Takes the lines that are logged. Views are valid during the call only.
using LogSink = std::function<void(LogLevel level, std::string_view module, std::string_view text)>;

/// Sends all further lines to `sink`; null restores standard error. The sink is called on the
/// thread that logs, by several threads at once if they log at once, and may still be running
/// on another thread when it is replaced.
KORVANI_API void setLogSink(LogSink sink);

/// The table of modules and whether they log.
class KORVANI_API KRVSwiftLogging {
 public:
  /// Whether `module` logs; false for a name that was never switched.
  static bool loggingEnabled(std::string_view module);

  /// Switches the lines of `module` on or off.
  static void setLoggingEnabled(std::string_view module, bool enabled);
};

/// Whether a line of this level and module would be logged now. Reads the module table only
/// when the threshold lets the level pass.
KORVANI_API bool isLogged(LogLevel level, std::string_view module);

/// Hands a finished line to the sink, whatever threshold and table say. The functions below
/// ask first.
KORVANI_API void writeLogLine(LogLevel level, std::string_view module, std::string_view text);

/// Logs `text()`, anything that converts to `std::string_view`, if the line is logged; else
/// `text` is not called.
template <class Text>
void logLine(LogLevel level, Text&& text, std::string_view module) {
  if (isLogged(level, module)) writeLogLine(level, module, std::forward<Text>(text)());
}

/// Logs a decision.
template <class Text>
void KRVDDLogDebug(Text&& text, std::string_view module) {
  logLine(LogLevel::debug, std::forward<Text>(text), module);
}

/// Logs a detail of one item among many.
template <class Text>
void KRVDDLogVerbose(Text&& text, std::string_view module) {
  logLine(LogLevel::verbose, std::forward<Text>(text), module);
}

/// Logs a timing.
template <class Text>
void KRVDDLogTest(Text&& text, std::string_view module) {
  logLine(LogLevel::test, std::forward<Text>(text), module);
}

}  // namespace KorvaniCommon
