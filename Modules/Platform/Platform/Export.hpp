#pragma once

/// The mark of the public interface.
///
/// The library is compiled with hidden symbols; a class or function that a host may use carries
/// `KORVANI_API`. Two macros, both set by the build files, say which role a file plays:
/// `KORVANI_SHARED` is defined for the library and its users when it is a shared library,
/// `KORVANI_BUILDING` only while the library itself is compiled. With neither, the mark is
/// harmless, so the sources also compile as plain files of a host's own project.

#if defined(_WIN32)
#if !defined(KORVANI_SHARED)
#define KORVANI_API
#elif defined(KORVANI_BUILDING)
#define KORVANI_API __declspec(dllexport)
#else
#define KORVANI_API __declspec(dllimport)
#endif
#else
#define KORVANI_API __attribute__((visibility("default")))
#endif
