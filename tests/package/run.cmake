# Installs the build into a scratch folder, builds tests/package against it as a stranger would, and runs its host.
# Run as: cmake -DSOURCE_DIR=<repository> -DBUILD_DIR=<build> -DWORK_DIR=<scratch> -DBUILD_TYPE=<type> -P run.cmake

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "failed (${result}): ${command}\n${output}")
  endif()
endfunction()

file(READ "${SOURCE_DIR}/tests/package/host.cpp" host)
file(READ "${SOURCE_DIR}/README.md" readme)
string(FIND "${readme}" "${host}" at)
if(at EQUAL -1)
  message(FATAL_ERROR "the host in README.md is not the one that is tested, tests/package/host.cpp")
endif()

file(REMOVE_RECURSE "${WORK_DIR}")
run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${WORK_DIR}/prefix")
run(${CMAKE_COMMAND} -S "${SOURCE_DIR}/tests/package" -B "${WORK_DIR}/build" -G Ninja
    "-DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix" "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")

run(${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen "${WORK_DIR}/build/controls")

# The host shows its window until somebody closes it, and here nobody does: to be stopped is its success.
execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen "${WORK_DIR}/build/host"
                        "${SOURCE_DIR}/samples/world.txw"
                TIMEOUT 5 RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result MATCHES "timeout")
  message(FATAL_ERROR "the host ended by itself (${result}): ${output}")
endif()
