#include "korvani-nav/Output.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const std::string& path, const std::string& reason) {
  throw InputError("cannot write " + path + ": " + reason);
}

std::string lastError() { return std::generic_category().message(errno); }

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

bool writeAll(std::FILE* file, const std::string& text) {
  return std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
}

void writeDirectly(const std::string& text, const std::string& path) {
  const File file(std::fopen(path.c_str(), "wb"));
  if (file == nullptr || !writeAll(file.get(), text)) refuse(path, lastError());
}

/// Removes a file unless it was moved away in time.
struct Remover {
  fs::path path;
  ~Remover() {
    std::error_code ignored;
    if (!path.empty()) fs::remove(path, ignored);
  }
};

void replaceFile(const std::string& text, const fs::path& target, bool exists) {
  const fs::path part = target.string() + ".part" + std::to_string(getpid());
  {
    File file(std::fopen(part.c_str(), "wbx"));
    if (file == nullptr) refuse(target.string(), lastError());
    const Remover remover{part};
    if (!writeAll(file.get(), text) || fsync(fileno(file.get())) != 0) {
      refuse(target.string(), lastError());
    }
    file.reset();
    std::error_code fault;
    if (exists) fs::permissions(part, fs::status(target).permissions(), fault);
    fs::rename(part, target, fault);
    if (fault) refuse(target.string(), fault.message());
  }
}

}  // namespace

void writeOutput(const std::string& text, const std::string& path) {
  if (path.empty() || path == "-") {
    if (!writeAll(stdout, text)) refuse("standard output", lastError());
    return;
  }
  std::error_code fault;
  // Through links, so that a link stays one.
  const fs::path target = fs::weakly_canonical(path, fault);
  if (fault) refuse(path, fault.message());
  const auto type = fs::status(target, fault).type();
  if (type == fs::file_type::directory) refuse(path, "it is a folder");
  const bool exists = type == fs::file_type::regular;
  if (exists || type == fs::file_type::not_found) {
    replaceFile(text, target, exists);
  } else {
    writeDirectly(text, path);
  }
}

}  // namespace KorvaniTools
