# What `cmake --install` puts where: the libraries, their public headers below one folder of their
# own, and the descriptions by which CMake and pkg-config projects find them.
#
# The engine is the package; a further library is a component of it, with targets and a pkg-config
# description of its own, so that an installation without it is whole.

include(CMakePackageConfigHelpers)

set(KORVANI_INSTALL_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/KorvaniNavigation")
set(KORVANI_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/KorvaniNavigation")

# korvani_install_library(target)
#
# Installs a library and the file `<target>Targets.cmake`, which defines it for CMake projects.
function(korvani_install_library target)
  install(
    TARGETS ${target}
    EXPORT ${target}Targets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime
            NAMELINK_COMPONENT Development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development
    FILE_SET HEADERS DESTINATION "${KORVANI_INSTALL_INCLUDEDIR}" COMPONENT Development)
  install(
    EXPORT ${target}Targets
    NAMESPACE KorvaniNavigation::
    DESTINATION "${KORVANI_INSTALL_CMAKEDIR}"
    COMPONENT Development)
endfunction()

# korvani_install_pkg_config(name)
#
# Installs the pkg-config description made of cmake/<name>.pc.in.
function(korvani_install_pkg_config name)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
  install(
    FILES "${PROJECT_BINARY_DIR}/${name}.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT Development)
endfunction()

korvani_install_library(KorvaniNavigation)

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
korvani_install_pkg_config(KorvaniNavigation)

if(TARGET KorvaniNavigationRecorder)
  korvani_install_library(KorvaniNavigationRecorder)
  set(KORVANI_PC_RECORDER_CFLAGS "")
  if(BUILD_SHARED_LIBS)
    set(KORVANI_PC_RECORDER_CFLAGS "-DKORVANI_RECORDER_SHARED")
  endif()
  korvani_install_pkg_config(KorvaniNavigationRecorder)
endif()
