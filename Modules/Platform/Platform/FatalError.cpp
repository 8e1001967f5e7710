#include "Platform/FatalError.hpp"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <utility>

namespace KorvaniPlatform {

namespace {

struct InstalledHook {
  std::mutex mutex;
  FatalErrorHook hook;
};

// Never destroyed: errors may be raised while the process leaves.
InstalledHook& installedHook() {
  static auto* const installed = new InstalledHook;
  return *installed;
}

FatalErrorHook currentHook() {
  InstalledHook& installed = installedHook();
  const std::lock_guard lock(installed.mutex);
  return installed.hook;
}

void write(std::string_view message, std::string_view location) {
  std::string line = "fatal error: ";
  line.append(message).append(" (").append(location).append(")\n");
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
}

}  // namespace

void setFatalErrorHook(FatalErrorHook hook) {
  InstalledHook& installed = installedHook();
  const std::lock_guard lock(installed.mutex);
  installed.hook.swap(hook);
}

void fatalError(std::string_view message, std::string_view location) noexcept {
  thread_local bool inHook = false;
  write(message, location);
  if (!inHook) {
    inHook = true;
    if (const FatalErrorHook hook = currentHook()) hook(message, location);
  }
  std::abort();
}

}  // namespace KorvaniPlatform
