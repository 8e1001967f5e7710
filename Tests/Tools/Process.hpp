#pragma once

/// Runs korvani-nav as a process.

#include <string>
#include <utility>
#include <vector>

namespace KorvaniTest {

/// What a process has left behind.
struct Outcome {
  int status = -1;  ///< exit status; -1 when it did not end by itself
  std::string output;
  std::string errors;
};

/// Runs korvani-nav with those arguments, each as it is, and waits for it.
/// @param environment assignments for the shell, e.g. "NO_COLOR=1"
Outcome runTool(const std::vector<std::string>& arguments, const std::string& environment = "");

/// The same with a terminal as the tool's standard output; what it writes to either stream is in
/// `output`, with the terminal's line ends.
Outcome runToolOnTerminal(const std::vector<std::string>& arguments,
                          const std::vector<std::pair<std::string, std::string>>& environment);

/// A file of this process's own that is removed with the object.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& text = "");
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& path() const { return path_; }
  std::string text() const;

 private:
  std::string path_;
};

}  // namespace KorvaniTest
