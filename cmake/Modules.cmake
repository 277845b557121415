# tarvinel_module(<target> <source>...): a static library whose Qt modules and
# arrows come from layers.txt, so that the list of layers is the only place that grants them.

file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/layers.txt TARVINEL_LAYERS REGEX "^[a-z]")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/layers.txt)

function(tarvinel_module target)
  add_library(${target} STATIC ${ARGN})
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${target} PRIVATE strictness)
  # What uic writes is not ours to hold to the warnings.
  target_include_directories(${target} SYSTEM PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/include)
  foreach(line IN LISTS TARVINEL_LAYERS)
    string(REGEX REPLACE "[ \t]+" ";" fields "${line}")
    list(GET fields 0 name)
    if(NOT name STREQUAL target)
      continue()
    endif()
    list(GET fields 2 modules)
    list(GET fields 3 arrows)
    string(REPLACE "," ";" modules "${modules}")
    string(REPLACE "," ";" arrows "${arrows}")
    list(TRANSFORM modules PREPEND "Qt5::")
    list(REMOVE_ITEM arrows "-")
    target_link_libraries(${target} PUBLIC ${modules} ${arrows})
    return()
  endforeach()
  message(FATAL_ERROR "cmake/layers.txt does not name the target '${target}'")
endfunction()

# tarvinel_test(<name> [PLATFORM offscreen|desktop|screen|none] [SCREEN <width>x<height>] [TIMEOUT <seconds>]
#               LINKS <targets> SOURCES <files> [LABELS <labels>] [ENVIRONMENT <name=value>...])
# A QtTest program. It sees no fonts but those of the installation. A Qt warning that the case did not announce with QTest::ignoreMessage fails it.
# `desktop` runs it on an X server of its own under a window manager, `screen` on one without, `none` leaves the platform to the test.
# SCREEN is the size of that server's screen in pixels.
function(tarvinel_test name)
  cmake_parse_arguments(arg "" "PLATFORM;SCREEN;TIMEOUT" "LINKS;SOURCES;LABELS;ENVIRONMENT" ${ARGN})
  if(NOT arg_PLATFORM)
    set(arg_PLATFORM offscreen)
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE strictness Qt5::Test ${arg_LINKS})
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1>) # half of what is compiled, and run once
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  # A folder of its own: what the program finds beside itself differs from test to test.
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${name}/bin)
  if(arg_SCREEN)
    string(PREPEND arg_SCREEN "@")
  endif()
  set(environment "LC_ALL=C.UTF-8" "QT_LOGGING_RULES=" "FONTCONFIG_FILE=${CMAKE_BINARY_DIR}/tests/fonts.conf" ${arg_ENVIRONMENT})
  if(arg_PLATFORM STREQUAL "desktop")
    add_test(NAME ${name} COMMAND on_desktop icewm${arg_SCREEN} $<TARGET_FILE:${name}>)
  elseif(arg_PLATFORM STREQUAL "screen")
    add_test(NAME ${name} COMMAND on_desktop none${arg_SCREEN} $<TARGET_FILE:${name}>)
  else()
    add_test(NAME ${name} COMMAND ${name})
    list(APPEND environment "QT_QPA_PLATFORM=${arg_PLATFORM}")
  endif()
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "${environment}"
    FAIL_REGULAR_EXPRESSION "QWARN  :;QCRITICAL:;QFATAL :"
    TIMEOUT ${arg_TIMEOUT}
    LABELS "${arg_LABELS}")
endfunction()
