#pragma once

/// The mark of the recorder's interface, as `Platform/Export.hpp` has one for the engine. The two
/// are libraries of their own, and while one is compiled the other is only used.
///
/// `KORVANI_RECORDER_SHARED` is defined for the library and its users when it is a shared library,
/// `KORVANI_RECORDER_BUILDING` only while the library itself is compiled.

#if defined(_WIN32)
#if !defined(KORVANI_RECORDER_SHARED)
#define KORVANI_RECORDER_API
#elif defined(KORVANI_RECORDER_BUILDING)
#define KORVANI_RECORDER_API __declspec(dllexport)
#else
#define KORVANI_RECORDER_API __declspec(dllimport)
#endif
#else
#define KORVANI_RECORDER_API __attribute__((visibility("default")))
#endif
