# What people and shells look for beside the installed tool in PREFIX is there, and the tool runs.

cmake_minimum_required(VERSION 3.25)

foreach(file ${FILES})
    if(NOT EXISTS ${PREFIX}/${file})
        message(FATAL_ERROR "${file} is not installed")
    endif()
endforeach()
execute_process(COMMAND ${PREFIX}/${TOOL} --version OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
if(NOT output STREQUAL "brackwell ${VERSION}\n")
    message(FATAL_ERROR "The installed tool says ${output}")
endif()
