# Runs the line COMMAND in the fresh folder FOLDER with copies of the documents of the project ROOT, and fails unless it
# succeeds and prints what stands in the file EXPECTED. LINK, when given, is a name in the folder for
# the program TARGET; the programs in the folder TOOL are found by their names.

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${FOLDER})
file(GLOB documents ${ROOT}/examples/*.ofx ${ROOT}/docs/documents/*.ofx)
file(COPY ${documents} DESTINATION ${FOLDER})
if(LINK)
    file(CREATE_LINK ${TARGET} ${FOLDER}/${LINK} SYMBOLIC)
endif()
set(ENV{PATH} "${TOOL}:$ENV{PATH}")
set(ENV{TZ} UTC)
set(ENV{LC_ALL} C)
unset(ENV{COLUMNS})

separate_arguments(command UNIX_COMMAND "${COMMAND}")
execute_process(
    COMMAND ${command}
    WORKING_DIRECTORY ${FOLDER}
    OUTPUT_VARIABLE output
    RESULT_VARIABLE result
    TIMEOUT 60)
message("${output}")
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The code of the page ended with ${result}")
endif()

file(READ ${EXPECTED} expected)
string(REGEX REPLACE "\\.\\.\\.\n$" "" beginning "${expected}")
if(NOT beginning STREQUAL expected)
    string(LENGTH "${beginning}" length)
    string(SUBSTRING "${output}" 0 ${length} output)
endif()
if(NOT output STREQUAL beginning)
    message("--- The page says:\n${expected}")
    message(FATAL_ERROR "The page differs from the output")
endif()
