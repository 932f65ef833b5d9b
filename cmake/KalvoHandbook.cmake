# The handbook: docs/handbuch as HTML in build/…/handbuch, beside the folder of the program.

# kalvo_handbook(): the target handbuch; without the tool it makes nothing, and the program says so when it is asked for
# the handbook.
function(kalvo_handbook)
  find_program(SPHINX_BUILD sphinx-build)
  if(NOT SPHINX_BUILD)
    message(STATUS "sphinx-build (python3-sphinx) is missing: no handbook")
    add_custom_target(handbuch COMMENT "No handbook: sphinx-build is missing")
    return()
  endif()
  set(source ${CMAKE_SOURCE_DIR}/docs/handbuch)
  set(output ${CMAKE_BINARY_DIR}/handbuch)
  file(GLOB_RECURSE parts CONFIGURE_DEPENDS ${source}/* ${CMAKE_SOURCE_DIR}/docs/galerie/*.png)
  add_custom_command(OUTPUT ${output}/index.html
                     COMMAND ${SPHINX_BUILD} -q -b html -d ${CMAKE_BINARY_DIR}/handbuch.doctrees
                             -D version=${PROJECT_VERSION} -D release=${PROJECT_VERSION} ${source} ${output}
                     COMMAND ${CMAKE_COMMAND} -E touch ${output}/index.html
                     DEPENDS ${parts} ${CMAKE_CURRENT_FUNCTION_LIST_FILE}
                     COMMENT "Building the handbook" VERBATIM)
  if(KALVO_HANDBOOK)
    add_custom_target(handbuch ALL DEPENDS ${output}/index.html)
    install(DIRECTORY ${output}/ DESTINATION share/kalvo/handbuch OPTIONAL
            PATTERN ".buildinfo" EXCLUDE PATTERN "objects.inv" EXCLUDE)
  else()
    add_custom_target(handbuch DEPENDS ${output}/index.html)
  endif()
endfunction()
