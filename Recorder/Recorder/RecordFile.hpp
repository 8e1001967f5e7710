#pragma once

// Internal. A file that is written line by line and is whole after each of them.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

namespace KorvaniRecorder {

// A text file that grows at its end. What was appended has left the process when `append` returns,
// so that it is there after a crash. The first failure ends the file: nothing is appended after it,
// and what it left of its line is cut off, so that the file ends with the last whole line.
//
// One thread at a time.
class RecordFile {
 public:
  // Makes the file, in place of one that is there.
  explicit RecordFile(std::filesystem::path path);

  // Appends `text`.
  // @return what went wrong, with the file's name; absent when all is well, and when the file had
  //     ended before
  std::optional<std::string> append(std::string_view text);

 private:
  std::string failure();

  const std::filesystem::path path_;
  std::ofstream stream_;
  std::uintmax_t size_ = 0;
  bool ended_ = false;
};

}  // namespace KorvaniRecorder
