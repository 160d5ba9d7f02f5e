# Runs PROGRAM with DOCUMENTS and fails unless it succeeds and, when the file EXPECTED exists, prints
# exactly what stands there.

cmake_minimum_required(VERSION 3.25)

execute_process(
    COMMAND ${PROGRAM} ${DOCUMENTS}
    OUTPUT_VARIABLE output
    RESULT_VARIABLE result
    TIMEOUT 60)
message("${output}")
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${result}")
endif()
if(EXISTS ${EXPECTED})
    file(READ ${EXPECTED} expected)
    if(NOT output STREQUAL expected)
        message(FATAL_ERROR "The output differs from ${EXPECTED}:\n${expected}")
    endif()
endif()
