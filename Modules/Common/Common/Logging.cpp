#include "Common/Logging.hpp"

#include <atomic>
#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include "Common/Guarded.hpp"

namespace KorvaniCommon {

namespace {

/// The process-wide settings. Never destroyed, since worker threads may log while the process
/// leaves.
struct Settings {
  std::atomic<LogLevel> threshold{LogLevel::info};
  Guarded<std::map<std::string, bool, std::less<>>> enabledModules;
  Guarded<std::shared_ptr<const LogSink>> sink;
};

Settings& settings() {
  static Settings& leaked = *new Settings;
  return leaked;
}

void writeToStandardError(LogLevel level, std::string_view module, std::string_view text) {
  std::string line = "[";
  line.append(nameOf(level)).append("] ").append(module).append(": ").append(text).append("\n");
  std::fwrite(line.data(), 1, line.size(), stderr);  // one call, so that lines do not mix
}

}  // namespace

std::string_view nameOf(LogLevel level) {
  switch (level) {
    case LogLevel::error:
      return "error";
    case LogLevel::warning:
      return "warning";
    case LogLevel::info:
      return "info";
    case LogLevel::debug:
      return "debug";
    case LogLevel::verbose:
      return "verbose";
    case LogLevel::test:
      return "test";
  }
  return "unknown";
}

LogLevel logThreshold() { return settings().threshold.load(std::memory_order_relaxed); }

void setLogThreshold(LogLevel threshold) {
  settings().threshold.store(threshold, std::memory_order_relaxed);
}

void setLogSink(LogSink sink) {
  settings().sink.store(sink ? std::make_shared<const LogSink>(std::move(sink)) : nullptr);
}

bool KRVSwiftLogging::loggingEnabled(std::string_view module) {
  return settings().enabledModules.read([&](const auto& modules) {
    const auto found = modules.find(module);
    return found != modules.end() && found->second;
  });
}

void KRVSwiftLogging::setLoggingEnabled(std::string_view module, bool enabled) {
  settings().enabledModules.update(
      [&](auto& modules) { modules.insert_or_assign(std::string(module), enabled); });
}

bool isLogged(LogLevel level, std::string_view module) {
  return level <= logThreshold() && KRVSwiftLogging::loggingEnabled(module);
}

void writeLogLine(LogLevel level, std::string_view module, std::string_view text) {
  if (const std::shared_ptr<const LogSink> sink = settings().sink.load()) {
    (*sink)(level, module, text);
  } else {
    writeToStandardError(level, module, text);
  }
}

}  // namespace KorvaniCommon
