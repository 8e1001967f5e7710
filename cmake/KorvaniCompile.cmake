# How everything in this repository is compiled.

# Wall-clock time matters most to whoever builds often; a cache set by hand is left alone.
if(PROJECT_IS_TOP_LEVEL AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(KORVANI_CCACHE ccache)
  mark_as_advanced(KORVANI_CCACHE)
  if(KORVANI_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${KORVANI_CCACHE}")
  endif()
endif()

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
endif()

# The code-checking scripts read compile_commands.json.
if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

set(KORVANI_GNU_LIKE "$<CXX_COMPILER_ID:GNU,Clang,AppleClang>")

# The whole process has to be instrumented, so these hold for every target of the build.
if(KORVANI_SANITIZE)
  add_compile_options("-fsanitize=${KORVANI_SANITIZE}" -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options("-fsanitize=${KORVANI_SANITIZE}")
endif()

if(KORVANI_COVERAGE)
  # Atomic counters: without them two threads in one function lose each other's counts.
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

# What code that uses the engine's headers has to be compiled with as well. Contraction into fused
# multiply-adds would make formulas in headers round differently from those in the library.
function(korvani_use_requirements target scope)
  target_compile_features(${target} ${scope} cxx_std_20)
  target_compile_options(${target} ${scope} "$<${KORVANI_GNU_LIKE}:-ffp-contract=off>")
  if(KORVANI_SINGLE_THREADED)
    target_compile_definitions(${target} ${scope} KORVANI_SINGLE_THREADED)
  else()
    target_link_libraries(${target} ${scope} Threads::Threads)
  endif()
endfunction()

# What the repository's own code is compiled with.
function(korvani_compile_own target)
  set_target_properties(
    ${target}
    PROPERTIES CXX_EXTENSIONS OFF
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_compile_options(
    ${target}
    PRIVATE
      "$<${KORVANI_GNU_LIKE}:-Wall;-Wextra;-Wpedantic;-Wconversion;-Wshadow;-ffp-contract=off>"
      # GCC's -Wconversion leaves signs alone in C++; both compilers are to ask the same.
      "$<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-sign-conversion>"
      # Fatal errors name their source location: relative to the repository, the same on
      # every machine.
      "$<${KORVANI_GNU_LIKE}:-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=>")
  if(KORVANI_SANITIZE)
    # Instrumented code misleads this warning of GCC's, inside std::regex for one; the uninstrumented
    # builds keep it.
    target_compile_options(${target} PRIVATE "$<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>")
  endif()
  if(CMAKE_UNITY_BUILD)
    # It takes included files for headers, in which an unnamed namespace would be a mistake.
    target_compile_options(${target} PRIVATE "$<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>")
  endif()
  if(KORVANI_WARNINGS_AS_ERRORS)
    set_target_properties(${target} PROPERTIES COMPILE_WARNING_AS_ERROR ON)
  endif()
endfunction()
