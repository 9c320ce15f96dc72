# Compiler settings shared by every target: the language level, warnings, sanitizers, ccache, precompiled headers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

# A build from nothing spends two thirds of its time on the same few headers: the tools turn this on where no compiler
# cache would be lost by it (ccache does not take what is compiled with it). The sources still include all they use.
option(TD_PRECOMPILE "Precompile the headers that most sources include" OFF)

find_program(TD_CCACHE ccache)
if(TD_CCACHE AND NOT TD_PRECOMPILE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${TD_CCACHE}")
endif()

add_library(td_compiler INTERFACE)
target_compile_options(td_compiler INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                                             -Wcast-qual -Wformat=2 -Wundef -ffp-contract=off)
if(TD_WARNINGS_AS_ERRORS)
  target_compile_options(td_compiler INTERFACE -Werror)
endif()
if(TD_SANITIZE)
  target_compile_options(td_compiler INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                               -fno-omit-frame-pointer)
  target_link_options(td_compiler INTERFACE -fsanitize=address,undefined)
else()
  target_link_options(td_compiler INTERFACE -Wl,--no-undefined)
endif()
target_compile_definitions(td_compiler INTERFACE QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
                                                 QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# td_precompile(<target that compiles them> LINKS <libraries…> HEADERS <headers…>)
#
# Precompiles headers where that is wanted, for other targets to take with td_take_precompiled().
function(td_precompile target)
  if(TD_PRECOMPILE)
    cmake_parse_arguments(ARG "" "" "LINKS;HEADERS" ${ARGN})
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "")
    add_library(${target} OBJECT "${source}")
    target_link_libraries(${target} PRIVATE ${ARG_LINKS} td_compiler)
    target_precompile_headers(${target} PRIVATE ${ARG_HEADERS})
  endif()
endfunction()

# td_take_precompiled(<target> <from>): compiles the target with the headers that <from> has precompiled, if it exists.
function(td_take_precompiled target from)
  if(TARGET ${from})
    target_precompile_headers(${target} REUSE_FROM ${from})
  endif()
endfunction()
