#include "Tools/Process.hpp"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
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

Outcome runToolOnTerminal(const std::vector<std::string>& arguments,
                          const std::vector<std::pair<std::string, std::string>>& environment) {
  std::vector<std::string> texts{KORVANI_NAV_PATH};
  texts.insert(texts.end(), arguments.begin(), arguments.end());
  std::vector<char*> words;
  words.reserve(texts.size() + 1);
  for (std::string& text : texts) words.push_back(text.data());
  words.push_back(nullptr);
  Outcome outcome;
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child < 0) return outcome;
  if (child == 0) {
    unsetenv("NO_COLOR");
    for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
    execv(words.front(), words.data());
    _exit(127);
  }
  std::array<char, 4096> buffer{};
  // Reading fails, rather than ends, when the other side of a terminal is closed.
  for (ssize_t count = 0; (count = read(terminal, buffer.data(), buffer.size())) > 0;) {
    outcome.output.append(buffer.data(), static_cast<std::size_t>(count));
  }
  close(terminal);
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
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
