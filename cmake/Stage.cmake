# The build tree has the shape of the installed tree: <build>/stage/bin, <build>/stage/configuration, ...
# so that a program runs from the build as it will run installed.

set(TARVINEL_STAGE ${CMAKE_BINARY_DIR}/stage)

# Where Qt's own translations are.
get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
execute_process(COMMAND ${qmake} -query QT_INSTALL_TRANSLATIONS
  OUTPUT_VARIABLE TARVINEL_QT_TRANSLATIONS OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

# tarvinel_program(<target>): put the program into stage/bin and into the installation's bin.
function(tarvinel_program target)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${TARVINEL_STAGE}/bin)
  install(TARGETS ${target} RUNTIME DESTINATION bin)
endfunction()
