#include "Tools/Process.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace KorvaniTest {
namespace {

/// `text` as one word of a shell command.
std::string shellWord(const std::string& text) {
  std::string word = "'";
  for (const char letter : text) {
    if (letter == '\'') {
      word += "'\\''";
    } else {
      word += letter;
    }
  }
  return word + '\'';
}

}  // namespace

Outcome runTool(const std::vector<std::string>& arguments, const std::string& environment) {
  const TemporaryFile errors;
  std::string command = environment + ' ' + shellWord(KORVANI_NAV_PATH);
  for (const std::string& argument : arguments) command += ' ' + shellWord(argument);
  command += " 2>" + shellWord(errors.path());
  Outcome outcome;
  std::FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return outcome;
  std::array<char, 4096> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
    outcome.output.append(buffer.data(), count);
  }
  const int status = pclose(pipe);
  if (WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
  outcome.errors = errors.text();
  return outcome;
}

TemporaryFile::TemporaryFile(const std::string& text) {
  static int number = 0;
  path_ = (std::filesystem::temp_directory_path() /
           ("korvani-test-" + std::to_string(getpid()) + '-' + std::to_string(number++)))
              .string();
  std::ofstream(path_, std::ios::binary) << text;
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

std::string TemporaryFile::text() const {
  std::ostringstream text;
  text << std::ifstream(path_, std::ios::binary).rdbuf();
  return text.str();
}

}  // namespace KorvaniTest
