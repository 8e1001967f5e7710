# GoogleTest: the installed library, or built here when another standard library is wanted
# (KORVANI_GOOGLETEST_SOURCE). Either way the targets are GTest::gtest and GTest::gmock.

if(KORVANI_GOOGLETEST_SOURCE)
  set(INSTALL_GTEST OFF)
  add_subdirectory("${KORVANI_GOOGLETEST_SOURCE}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL
                   SYSTEM)
  foreach(library IN ITEMS gtest gmock)
    # Its matchers for string views exist only when it is built as C++17 or later, as the tests are.
    target_compile_features(${library} PUBLIC cxx_std_20)
    if(NOT TARGET GTest::${library})
      add_library(GTest::${library} ALIAS ${library})
    endif()
  endforeach()
else()
  find_package(GTest 1.12 REQUIRED)
endif()
