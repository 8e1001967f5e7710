#pragma once

#include <functional>
#include <string_view>

#include "Platform/Export.hpp"

/// Broken invariants end the process.
///
/// What cannot be found is an absent result; what must never happen (a missing main configuration,
/// a base operation without override) is a fatal error. One function reports it, so that every
/// such report has the same form and a host's crash reporting sees all of them:
///
///     if (bundle == nullptr) KORVANI_FATAL("main configuration missing");
///
/// writes `fatal error: main configuration missing (Modules/Common/Common/CommonModule.cpp:42)` to
/// standard error, calls the hook, and aborts.
///
/// Thread safety: everything here may be called from any thread.

namespace KorvaniPlatform {

/// Told about a fatal error just before the process aborts: the message, and where it was raised
/// (mostly "FILE:LINE", relative to the repository). It runs on the failing thread. It must not
/// throw, and it cannot prevent the end.
using FatalErrorHook = std::function<void(std::string_view message, std::string_view location)>;

/// Installs the hook, for instance a crash reporter's; an empty one uninstalls it. One hook is
/// installed at a time, for the whole process.
KORVANI_API void setFatalErrorHook(FatalErrorHook hook);

/// Writes "fatal error: MESSAGE (LOCATION)" and a line end to standard error, calls the installed
/// hook, and aborts. A fatal error inside the hook is written too and then aborts at once.
[[noreturn]] KORVANI_API void fatalError(std::string_view message,
                                         std::string_view location) noexcept;

}  // namespace KorvaniPlatform

#define KORVANI_STRINGIFY_EXPANDED(text) #text
#define KORVANI_STRINGIFY(text) KORVANI_STRINGIFY_EXPANDED(text)

/// Raises a fatal error that names this place of the sources. The build maps source paths, so that
/// the place is relative to the repository and the same on every machine.
#define KORVANI_FATAL(message) \
  ::KorvaniPlatform::fatalError((message), __FILE__ ":" KORVANI_STRINGIFY(__LINE__))
