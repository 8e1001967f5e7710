# What `cmake --install` puts where: the library, its public headers below one folder of their
# own, and the descriptions by which CMake and pkg-config projects find them.

include(CMakePackageConfigHelpers)

set(KORVANI_INSTALL_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/KorvaniNavigation")
set(KORVANI_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/KorvaniNavigation")

install(
  TARGETS KorvaniNavigation
  EXPORT KorvaniNavigationTargets
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Runtime
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime
          NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development
  FILE_SET HEADERS DESTINATION "${KORVANI_INSTALL_INCLUDEDIR}" COMPONENT Development)

install(
  EXPORT KorvaniNavigationTargets
  NAMESPACE KorvaniNavigation::
  DESTINATION "${KORVANI_INSTALL_CMAKEDIR}"
  COMPONENT Development)

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/KorvaniNavigationConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/KorvaniNavigationConfig.cmake"
  INSTALL_DESTINATION "${KORVANI_INSTALL_CMAKEDIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KorvaniNavigationConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(
  FILES "${PROJECT_BINARY_DIR}/KorvaniNavigationConfig.cmake"
        "${PROJECT_BINARY_DIR}/KorvaniNavigationConfigVersion.cmake"
  DESTINATION "${KORVANI_INSTALL_CMAKEDIR}"
  COMPONENT Development)

# pkg-config: the compile flags say what the CMake target says, the language version aside (C++20
# or later), which is the user's to choose.
set(KORVANI_PC_CFLAGS "-ffp-contract=off")
set(KORVANI_PC_THREADS "")
# From the description's folder back to the prefix, so that an installed tree can be moved.
file(RELATIVE_PATH KORVANI_PC_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
if(KORVANI_SINGLE_THREADED)
  string(APPEND KORVANI_PC_CFLAGS " -DKORVANI_SINGLE_THREADED")
else()
  string(APPEND KORVANI_PC_CFLAGS " -pthread")
  set(KORVANI_PC_THREADS "-pthread")
endif()
if(BUILD_SHARED_LIBS)
  string(APPEND KORVANI_PC_CFLAGS " -DKORVANI_SHARED")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/KorvaniNavigation.pc.in"
               "${PROJECT_BINARY_DIR}/KorvaniNavigation.pc" @ONLY)
install(
  FILES "${PROJECT_BINARY_DIR}/KorvaniNavigation.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT Development)
