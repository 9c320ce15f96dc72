# Proves that a forbidden link between folders of src/ stops the configure step, and that an allowed one does not.
# Run as: cmake -DSOURCE_DIR=<the repository> -DWORK_DIR=<a scratch folder> -P layers.cmake

function(configure_with links expectation)
  file(REMOVE_RECURSE "${WORK_DIR}")
  file(WRITE "${WORK_DIR}/empty.cpp" "")
  file(WRITE "${WORK_DIR}/CMakeLists.txt" "
    cmake_minimum_required(VERSION 3.25)
    project(Layers LANGUAGES CXX)
    include(GNUInstallDirs)
    include(${SOURCE_DIR}/cmake/TdLayers.cmake)
    add_library(td_compiler INTERFACE)
    td_add_folder(engine SHARED SOURCES empty.cpp)
    td_add_folder(common SOURCES empty.cpp LINKS engine)
    td_add_folder(workspace SOURCES empty.cpp LINKS common)
    ${links}
    td_check_layers()")
  execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S "${WORK_DIR}" -B "${WORK_DIR}/build"
                  RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE errors)
  string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
  if(expectation STREQUAL "passes")
    if(NOT result EQUAL 0)
      message(FATAL_ERROR "allowed links were refused: ${errors}")
    endif()
  elseif(result EQUAL 0)
    message(FATAL_ERROR "a forbidden link was let through: ${links}")
  elseif(NOT errors MATCHES "${expectation}")
    message(FATAL_ERROR "refused for another reason: ${errors}")
  endif()
endfunction()

configure_with("" "passes")
configure_with("target_link_libraries(td_workspace PRIVATE txengine)" "passes")
configure_with("target_link_libraries(td_common PRIVATE td_workspace)" "src/common links src/workspace")
configure_with("target_link_libraries(txengine PUBLIC td_common)" "src/engine links src/common")
configure_with("td_add_folder(cellar SOURCES empty.cpp)" "no place in cmake/TdLayers.cmake")
