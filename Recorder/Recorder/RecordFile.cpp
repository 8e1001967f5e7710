#include "Recorder/RecordFile.hpp"

#include <cerrno>
#include <system_error>
#include <utility>

namespace KorvaniRecorder {

RecordFile::RecordFile(std::filesystem::path path) : path_(std::move(path)) {
  errno = 0;
  stream_.open(path_, std::ios::binary | std::ios::trunc);
}

std::optional<std::string> RecordFile::append(std::string_view text) {
  if (ended_) return {};
  if (stream_) {
    errno = 0;
    stream_ << text << std::flush;
  }
  if (!stream_) return failure();
  size_ += text.size();
  return {};
}

std::string RecordFile::failure() {
  const int reason = errno;
  ended_ = true;
  std::string message = path_.string() + ": could not be written";
  if (reason != 0) message += " (" + std::generic_category().message(reason) + ")";
  if (!stream_.is_open()) return message;
  stream_.close();
  std::error_code ignored;
  std::filesystem::resize_file(path_, size_, ignored);
  return message;
}

}  // namespace KorvaniRecorder
