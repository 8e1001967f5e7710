#include "Support/Process.hpp"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>

namespace KorvaniBenchmarks {

namespace {

/// A pipe's two ends, closed when they are not needed any more.
struct Pipe {
  std::array<int, 2> ends{-1, -1};

  bool open() { return pipe(ends.data()) == 0; }
  void close(std::size_t end) {
    if (ends.at(end) >= 0) ::close(ends.at(end));
    ends.at(end) = -1;
  }
  Pipe() = default;
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    close(0);
    close(1);
  }
};

std::optional<pid_t> spawn(std::vector<std::string> command, Pipe& output) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output.ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, output.ends[0]);
  pid_t child = 0;
  const int failed =
      posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failed != 0) return std::nullopt;
  return child;
}

std::string readAll(int file) {
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t got = 0; (got = read(file, buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(got));
  }
  return text;
}

}  // namespace

std::optional<std::string> outputOf(const std::vector<std::string>& command) {
  Pipe output;
  if (!output.open()) return std::nullopt;
  const auto child = spawn(command, output);
  if (!child) return std::nullopt;
  output.close(1);
  std::string text = readAll(output.ends[0]);
  int status = 0;
  if (waitpid(*child, &status, 0) != *child || status != 0) return std::nullopt;
  return text;
}

}  // namespace KorvaniBenchmarks
