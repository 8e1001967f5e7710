# The engine. It is compiled once, into objects, and packed twice:
#
#   KorvaniNavigation          what is installed and what tools and examples link; static, or
#                              shared with BUILD_SHARED_LIBS; shows the public symbols only
#   korvani_engine_internal    always static; what tests link, so that they reach internal symbols
#
# Beside them:
#
#   korvani_engine_headers     include folders and compile requirements without the library, for
#                              libraries whose user chooses one of the two
#   korvani_internal_headers   lets the header check compile each internal header alone
#
# Each source folder states its files with korvani_engine_files().

set(KORVANI_MODULE_ROOTS
    "${PROJECT_SOURCE_DIR}/Modules/Platform" "${PROJECT_SOURCE_DIR}/Modules/Common"
    "${PROJECT_SOURCE_DIR}/Modules/Navigation")

function(korvani_begin_engine)
  if(NOT KORVANI_SINGLE_THREADED)
    find_package(Threads REQUIRED)
  endif()

  add_library(korvani_engine_objects OBJECT)
  korvani_compile_own(korvani_engine_objects)
  korvani_use_requirements(korvani_engine_objects PUBLIC)
  set_target_properties(korvani_engine_objects PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_include_directories(korvani_engine_objects PUBLIC ${KORVANI_MODULE_ROOTS})
  target_compile_definitions(korvani_engine_objects PRIVATE KORVANI_BUILDING)

  add_library(KorvaniNavigation)
  add_library(KorvaniNavigation::KorvaniNavigation ALIAS KorvaniNavigation)
  korvani_use_requirements(KorvaniNavigation PUBLIC)
  target_sources(KorvaniNavigation PRIVATE $<TARGET_OBJECTS:korvani_engine_objects>)
  set_target_properties(
    KorvaniNavigation
    PROPERTIES LINKER_LANGUAGE CXX
               VERSION ${PROJECT_VERSION}
               SOVERSION ${PROJECT_VERSION_MAJOR}
               VERIFY_INTERFACE_HEADER_SETS ON)
  if(BUILD_SHARED_LIBS)
    target_compile_definitions(korvani_engine_objects PRIVATE KORVANI_SHARED)
    target_compile_definitions(KorvaniNavigation INTERFACE KORVANI_SHARED)
  endif()

  add_library(korvani_engine_headers INTERFACE)
  korvani_use_requirements(korvani_engine_headers INTERFACE)
  target_include_directories(korvani_engine_headers INTERFACE ${KORVANI_MODULE_ROOTS})

  add_library(korvani_internal_headers INTERFACE)
  target_link_libraries(korvani_internal_headers INTERFACE korvani_engine_headers)
  set_target_properties(korvani_internal_headers PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)

  add_library(korvani_engine_internal STATIC EXCLUDE_FROM_ALL)
  target_sources(korvani_engine_internal PRIVATE $<TARGET_OBJECTS:korvani_engine_objects>)
  target_link_libraries(korvani_engine_internal PUBLIC korvani_engine_headers)
  set_target_properties(korvani_engine_internal PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

# korvani_engine_files(PUBLIC_HEADERS ... INTERNAL_HEADERS ... SOURCES ...)
#
# Adds files of the current folder to the engine, paths relative to it. Public headers are
# installed; internal ones sit beside them and are not.
function(korvani_engine_files)
  cmake_parse_arguments(PARSE_ARGV 0 FILES "" "" "PUBLIC_HEADERS;INTERNAL_HEADERS;SOURCES")
  if(FILES_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "korvani_engine_files: unknown arguments ${FILES_UNPARSED_ARGUMENTS}")
  endif()
  foreach(kind IN ITEMS PUBLIC_HEADERS INTERNAL_HEADERS SOURCES)
    foreach(file IN LISTS FILES_${kind})
      cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
      if(NOT EXISTS "${file}")
        message(FATAL_ERROR "korvani_engine_files: no such file: ${file}")
      endif()
      set_property(GLOBAL APPEND PROPERTY KORVANI_ENGINE_${kind} "${file}")
    endforeach()
  endforeach()
endfunction()

# A header that no list states would be missing from the installation, and a check would not see it.
function(korvani_complain_about_unlisted)
  foreach(root IN LISTS KORVANI_MODULE_ROOTS)
    file(GLOB_RECURSE present "${root}/*.hpp" "${root}/*.cpp")
    list(REMOVE_ITEM present ${ARGN})
    if(present)
      list(JOIN present "\n  " unlisted)
      message(FATAL_ERROR "Stated by no korvani_engine_files():\n  ${unlisted}")
    endif()
  endforeach()
endfunction()

function(korvani_finish_engine)
  foreach(kind IN ITEMS PUBLIC_HEADERS INTERNAL_HEADERS SOURCES)
    get_property(${kind} GLOBAL PROPERTY KORVANI_ENGINE_${kind})
  endforeach()
  korvani_complain_about_unlisted(${PUBLIC_HEADERS} ${INTERNAL_HEADERS} ${SOURCES})
  target_sources(korvani_engine_objects PRIVATE ${SOURCES})
  # A file set adds its base folders to the include folders of whoever uses the library.
  target_sources(
    KorvaniNavigation PUBLIC FILE_SET HEADERS BASE_DIRS ${KORVANI_MODULE_ROOTS}
                             FILES ${PUBLIC_HEADERS})
  if(INTERNAL_HEADERS)
    target_sources(
      korvani_internal_headers INTERFACE FILE_SET HEADERS BASE_DIRS ${KORVANI_MODULE_ROOTS}
                                         FILES ${INTERNAL_HEADERS})
  endif()
endfunction()
