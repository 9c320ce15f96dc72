# Builds the fuzzers with Clang and runs each for some seconds on its seeds. What breaks one is left in WORK_DIR.
# Run as: cmake -DSOURCE_DIR=<repository> -DWORK_DIR=<scratch> -DCLANG=<clang++, or false> -DSECONDS=<each> -P run.cmake

file(MAKE_DIRECTORY "${WORK_DIR}")
file(WRITE "${WORK_DIR}/probe.cpp" "extern \"C\" int LLVMFuzzerTestOneInput(const char *, unsigned long) { return 0; }\n")
set(result "no Clang")
if(CLANG)
  execute_process(COMMAND "${CLANG}" -fsanitize=fuzzer,address -o "${WORK_DIR}/probe" "${WORK_DIR}/probe.cpp"
                  RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
endif()
if(NOT result EQUAL 0)
  message("skipped: needs Clang with libFuzzer")
  return()
endif()

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${WORK_DIR}" RESULT_VARIABLE result OUTPUT_VARIABLE output
                                                                                      ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "failed (${result}): ${command}\n${output}")
  endif()
endfunction()

run(${CMAKE_COMMAND} -S "${SOURCE_DIR}/tests/fuzz" -B "${WORK_DIR}/build" -G Ninja "-DCMAKE_CXX_COMPILER=${CLANG}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
file(GLOB corpora RELATIVE "${SOURCE_DIR}/tests/fuzz/corpus" "${SOURCE_DIR}/tests/fuzz/corpus/*")
foreach(format IN LISTS corpora)
  # What a fuzzer finds out stays, so that the next run goes on from there; the seeds are only read.
  file(MAKE_DIRECTORY "${WORK_DIR}/${format}")
  run("${WORK_DIR}/build/fuzz_${format}" -max_total_time=${SECONDS} -max_len=4096 -timeout=5 -rss_limit_mb=1024
      -malloc_limit_mb=64 "${WORK_DIR}/${format}" "${SOURCE_DIR}/tests/fuzz/corpus/${format}")
endforeach()
