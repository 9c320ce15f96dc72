# The layers of src/. A folder is one target, and may link only the folders that stand below it; a forbidden link stops
# the configure step.

define_property(GLOBAL PROPERTY TD_LAYER_FOLDERS)

set(TD_MAY_LINK_engine "")
set(TD_MAY_LINK_basic "")
set(TD_MAY_LINK_res "")
set(TD_MAY_LINK_common engine basic res)
set(TD_MAY_LINK_workspace common engine basic res)
set(TD_MAY_LINK_colour common engine basic res)
set(TD_MAY_LINK_controls common engine basic res)
set(TD_MAY_LINK_pickers workspace common engine basic res)
set(TD_MAY_LINK_dialogs pickers controls common workspace engine basic res)
set(TD_MAY_LINK_projection pickers controls common workspace engine basic res)

# The target that stands for each folder. Folders of TdCommon are object libraries, joined in src/CMakeLists.txt.
function(td_folder_target out folder)
  if(folder STREQUAL "engine")
    set(${out} txengine PARENT_SCOPE)
  elseif(folder STREQUAL "basic")
    set(${out} TdBasic PARENT_SCOPE)
  else()
    set(${out} td_${folder} PARENT_SCOPE)
  endif()
endfunction()

# td_add_folder(<folder> [SHARED] [HEADERS <public headers…>] SOURCES <files…> [LINKS <folders…>]
#               [LIBRARIES <third-party targets…>] [PRIVATE_LIBRARIES <third-party targets that no public header shows…>])
#
# Declares the one target of a folder of src/. Public headers are installed; all others are the folder's own affair.
function(td_add_folder folder)
  cmake_parse_arguments(ARG "SHARED" "" "HEADERS;SOURCES;LINKS;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
  if(NOT DEFINED TD_MAY_LINK_${folder})
    message(FATAL_ERROR "src/${folder} has no place in cmake/TdLayers.cmake")
  endif()
  td_folder_target(target ${folder})
  if(ARG_SHARED)
    add_library(${target} SHARED ${ARG_HEADERS} ${ARG_SOURCES})
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  else()
    add_library(${target} OBJECT ${ARG_HEADERS} ${ARG_SOURCES})
    target_compile_definitions(${target} PRIVATE TDCOMMON_BUILD)
  endif()
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/TdCommon>)
  foreach(below IN LISTS ARG_LINKS)
    td_folder_target(belowTarget ${below})
    target_link_libraries(${target} PUBLIC ${belowTarget})
  endforeach()
  target_link_libraries(${target} PUBLIC ${ARG_LIBRARIES} PRIVATE ${ARG_PRIVATE_LIBRARIES} $<BUILD_INTERFACE:td_compiler>)
  if(TARGET td_headers AND NOT "Qt6::Core" IN_LIST ARG_LIBRARIES) # those are of windows, which need more than the core
    target_precompile_headers(${target} REUSE_FROM td_headers)
  endif()
  foreach(header IN LISTS ARG_HEADERS)
    cmake_path(GET header PARENT_PATH subfolder)
    install(FILES ${header} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/TdCommon/${folder}/${subfolder}")
  endforeach()
  set_property(GLOBAL APPEND PROPERTY TD_LAYER_FOLDERS ${folder})
endfunction()

# Stops the configure step when a folder's target links another folder that does not stand below it. It reads the
# targets as they are, so a link made by hand with target_link_libraries is caught too.
function(td_check_layers)
  get_property(folders GLOBAL PROPERTY TD_LAYER_FOLDERS)
  foreach(folder IN LISTS folders)
    td_folder_target(target ${folder})
    get_target_property(links ${target} LINK_LIBRARIES)
    foreach(other IN LISTS folders)
      td_folder_target(otherTarget ${other})
      if(otherTarget IN_LIST links AND NOT other IN_LIST TD_MAY_LINK_${folder})
        message(FATAL_ERROR "src/${folder} links src/${other}, which does not stand below it (see cmake/TdLayers.cmake)")
      endif()
    endforeach()
    if("TdCommon" IN_LIST links)
      message(FATAL_ERROR "src/${folder} links TdCommon, which is made of it")
    endif()
  endforeach()
endfunction()
