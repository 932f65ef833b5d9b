# One static library per source folder, so that tests link exactly what ships.

# kalvo_folder(NAME [WIDGETS] USES folders... LIBRARIES targets...)
# src/NAME/*.cpp becomes kalvo_NAME; src/NAME/ui/*.cpp, if there are any, becomes kalvo_NAME_ui,
# which sees its own logic, the folders in USES and kalvo_widgets.
function(kalvo_folder name)
  cmake_parse_arguments(arg "WIDGETS" "" "USES;LIBRARIES" ${ARGN})
  kalvo_library(kalvo_${name} ${CMAKE_SOURCE_DIR}/src/${name})
  list(TRANSFORM arg_USES PREPEND kalvo_ OUTPUT_VARIABLE used)
  kalvo_link(kalvo_${name} ${used} ${arg_LIBRARIES})

  kalvo_library(kalvo_${name}_ui ${CMAKE_SOURCE_DIR}/src/${name}/ui)
  kalvo_link(kalvo_${name}_ui kalvo_${name} kalvo_widgets Qt6::Widgets)
endfunction()

function(kalvo_library target folder)
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h ${folder}/*.qrc)
  list(FILTER sources EXCLUDE REGEX "/src/app/main\\.cpp$|/src/audio/(Encoder)?Module\\.cpp$|/src/tags/CdBaseModule\\.cpp$")
  set(compiled ${sources})
  list(FILTER compiled INCLUDE REGEX "\\.cpp$")
  if(NOT compiled)
    add_library(${target} INTERFACE)
    return()
  endif()
  add_library(${target} STATIC ${sources})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  if(target STREQUAL "kalvo_audio")
    kalvo_precompile(${target} Std)
    return()
  endif()
  set_target_properties(${target} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_compile_definitions(${target} PUBLIC QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)
  if(target MATCHES "_ui$|_widgets$|_app$")
    kalvo_precompile(${target} Widgets)
  else()
    kalvo_precompile(${target} Core)
  endif()
endfunction()

function(kalvo_link target)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "INTERFACE_LIBRARY")
    target_include_directories(${target} INTERFACE ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${target} INTERFACE ${ARGN})
  else()
    target_link_libraries(${target} PUBLIC ${ARGN})
  endif()
endfunction()

# kalvo_module(TARGET FILE SOURCE library)
# A component that is loaded at run time under its historical file name, from beside the executable.
function(kalvo_module target file source library)
  add_library(${target} MODULE ${CMAKE_SOURCE_DIR}/src/${source})
  target_link_libraries(${target} PRIVATE ${library})
  target_link_options(${target} PRIVATE -Wl,--exclude-libs,ALL -Wl,--as-needed)
  set_target_properties(${target} PROPERTIES PREFIX "" OUTPUT_NAME ${file} SUFFIX ""
                        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  set_property(GLOBAL APPEND PROPERTY kalvo_modules ${target})
endfunction()

function(kalvo_program)
  if(NOT EXISTS ${CMAKE_SOURCE_DIR}/src/app/main.cpp)
    return()
  endif()
  add_executable(kalvo ${CMAKE_SOURCE_DIR}/src/app/main.cpp)
  target_link_libraries(kalvo PRIVATE kalvo_app)
  target_compile_definitions(kalvo_app PUBLIC KALVO_VERSION="${PROJECT_VERSION}"
                             PRIVATE KALVO_WEB_ADDRESS="${KALVO_WEB_ADDRESS}")
  get_property(modules GLOBAL PROPERTY kalvo_modules)
  add_dependencies(kalvo ${modules})
endfunction()

# For whoever publishes components; built on demand.
function(kalvo_signing_tool)
  add_executable(kalvo-signieren EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/packaging/kalvo-signieren.cpp
                 ${CMAKE_SOURCE_DIR}/src/app/ComponentSignature.cpp)
  target_include_directories(kalvo-signieren PRIVATE ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(kalvo-signieren PRIVATE Qt6::Core PkgConfig::libsodium)
endfunction()
