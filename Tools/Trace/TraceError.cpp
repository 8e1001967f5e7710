#include "Trace/TraceError.hpp"

#include "Support/PlainText.hpp"

namespace KorvaniTools {
namespace {

std::string message(const std::string& file, std::size_t line, const std::string& subject,
                    const std::string& found, const std::string& expected) {
  return plainLine(file + ": line " + std::to_string(line) + ": " +
                   (subject.empty() ? "" : subject + ": ") + "found " + found + ", expected " +
                   expected);
}

}  // namespace

TraceError::TraceError(const std::string& file, std::size_t line, const std::string& subject,
                       const std::string& found, const std::string& expected)
    : InputError(message(file, line, subject, found, expected)), line_(line) {}

}  // namespace KorvaniTools
