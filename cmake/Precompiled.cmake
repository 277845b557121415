# tarvinel_precompile(<folder>): lets all targets of the folder and of those below it start from the toolkit's headers as
# parsed once for the whole build, which halves the time of a build from nothing. What a file uses it still includes: the
# static analysis reads the files of src without these headers, and a build with TARVINEL_PRECOMPILE=OFF reads all so.

option(TARVINEL_PRECOMPILE "Parse the toolkit's headers once for the whole build" ON)

function(tarvinel_precompile folder)
  if(NOT TARVINEL_PRECOMPILE)
    return()
  endif()
  if(NOT TARGET toolkit_headers)
    tarvinel_toolkit_headers()
  endif()
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  get_property(binaries DIRECTORY ${folder} PROPERTY BINARY_DIR)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type MATCHES "^(EXECUTABLE|STATIC_LIBRARY)$")
      target_precompile_headers(${target} REUSE_FROM toolkit_headers)
      if(type STREQUAL "EXECUTABLE") # nearly always empty there, and then quicker without
        set_source_files_properties(${binaries}/${target}_autogen/mocs_compilation.cpp DIRECTORY ${folder}
          PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
      endif()
    endif()
  endforeach()
  get_property(below DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(subfolder IN LISTS below)
    tarvinel_precompile(${subfolder})
  endforeach()
endfunction()

function(tarvinel_toolkit_headers)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/toolkit_headers.cpp CONTENT "")
  add_library(toolkit_headers OBJECT ${CMAKE_BINARY_DIR}/toolkit_headers.cpp)
  set_target_properties(toolkit_headers PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  # Only what every target is compiled with may be defined here, or the compiler refuses the headers: the modules above
  # Core lend their folders, not their definitions.
  target_link_libraries(toolkit_headers PRIVATE strictness Qt5::Core)
  set(headers
    <QDateTime> <QDir> <QElapsedTimer> <QFile> <QFileInfo> <QHash> <QJsonArray> <QJsonDocument> <QJsonObject>
    <QLoggingCategory> <QPointer> <QSet> <QStringBuilder> <QStringList> <QTimer> <QVector>
    <algorithm> <cmath> <functional> <memory> <optional>)
  # Under the sanitizers a header asks for the library of its classes even where none of them is used.
  if(NOT TARVINEL_SANITIZE)
    list(APPEND headers
      <QApplication> <QBoxLayout> <QDialog> <QGridLayout> <QLabel> <QMouseEvent> <QPainter> <QPushButton> <QScreen> <QWidget>)
    foreach(module Gui Widgets)
      target_include_directories(toolkit_headers SYSTEM PRIVATE $<TARGET_PROPERTY:Qt5::${module},INTERFACE_INCLUDE_DIRECTORIES>)
    endforeach()
  endif()
  target_precompile_headers(toolkit_headers PRIVATE ${headers})
endfunction()
