#include "Trace/TraceReader.hpp"

#include <cerrno>
#include <system_error>
#include <utility>

#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

[[noreturn]] void refuse(const std::string& file, const std::string& found) {
  throw InputError(file + ": found " + found + ", expected a trace file");
}

bool saysNothing(const std::string& line) {
  return line.find_first_not_of(" \t\r\v\f") == std::string::npos || line.front() == '#';
}

}  // namespace

std::ifstream openTrace(const std::filesystem::path& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) refuse(path.string(), "a folder");
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) {
    refuse(path.string(), "no readable file (" + std::generic_category().message(errno) + ")");
  }
  return stream;
}

TraceReader::TraceReader(std::istream& stream, std::string file)
    : stream_(stream), file_(std::move(file)) {}

std::optional<TraceLine> TraceReader::next() {
  std::string text;
  while (std::getline(stream_, text)) {
    ++number_;
    if (!saysNothing(text)) return parseTraceLine(text, file_, number_);
  }
  if (stream_.bad()) refuse(file_, "an unreadable file");
  return {};
}

}  // namespace KorvaniTools
