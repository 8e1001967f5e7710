#pragma once

/// Collects the lines that the module logs while it exists, in their order.
///
///     const LoggedLines lines(LogLevel::debug);
///     denier.check(*position);
///     EXPECT_EQ(lines.texts(), (std::vector<std::string>{"..."}));

#include <string>
#include <string_view>
#include <vector>

#include "Common/Logging.hpp"
#include "Navigation/API/Constants.hpp"

namespace KorvaniTest {

class LoggedLines {
 public:
  struct Line {
    KorvaniCommon::LogLevel level;
    std::string module;
    std::string text;
  };

  explicit LoggedLines(KorvaniCommon::LogLevel threshold) {
    KorvaniCommon::KRVSwiftLogging::setLoggingEnabled(module(), true);
    KorvaniCommon::setLogThreshold(threshold);
    KorvaniCommon::setLogSink([this](auto level, std::string_view module, std::string_view text) {
      lines_.push_back({level, std::string(module), std::string(text)});
    });
  }

  ~LoggedLines() {
    KorvaniCommon::setLogSink(nullptr);
    KorvaniCommon::setLogThreshold(before_);
    KorvaniCommon::KRVSwiftLogging::setLoggingEnabled(module(), enabledBefore_);
  }

  LoggedLines(const LoggedLines&) = delete;
  LoggedLines& operator=(const LoggedLines&) = delete;

  const std::vector<Line>& lines() const { return lines_; }

  /// The texts of the module's own lines.
  std::vector<std::string> texts() const {
    std::vector<std::string> result;
    for (const Line& line : lines_) {
      if (line.module == module()) result.push_back(line.text);
    }
    return result;
  }

  /// The texts of the module's own lines of one level.
  std::vector<std::string> texts(KorvaniCommon::LogLevel level) const {
    std::vector<std::string> result;
    for (const Line& line : lines_) {
      if (line.module == module() && line.level == level) result.push_back(line.text);
    }
    return result;
  }

 private:
  static std::string module() { return std::string(KorvaniNavigation::kKRVNavigationModuleName); }

  const KorvaniCommon::LogLevel before_ = KorvaniCommon::logThreshold();
  const bool enabledBefore_ = KorvaniCommon::KRVSwiftLogging::loggingEnabled(module());
  std::vector<Line> lines_;
};

}  // namespace KorvaniTest
