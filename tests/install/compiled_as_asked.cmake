# What somebody asks for reaches the commands that compile the library, in a project of theirs (CONSUMER) and when the
# library is built by itself (SOURCE), and warnings of our own do not. Somebody's warnings may be errors.

cmake_minimum_required(VERSION 3.25)

# Configures PROJECT with the definitions of DEFINE, and sees that every command that compiles a source of
# the library matches all expressions of EXPECT and none of REJECT, and one of them the expression SOME.
function(expect_commands project)
    cmake_parse_arguments(PARSE_ARGV 1 row "" "SOME" "DEFINE;EXPECT;REJECT")
    file(REMOVE ${WORK}/CMakeCache.txt)
    list(TRANSFORM row_DEFINE PREPEND -D)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -S ${project} -B ${WORK} -G ${GENERATOR}
            -D CMAKE_MAKE_PROGRAM=${MAKE_PROGRAM} -D CMAKE_CXX_COMPILER=${COMPILER}
            -D CMAKE_EXPORT_COMPILE_COMMANDS=ON -D BRACKWELL_SOURCE=${SOURCE} -D BRACKWELL_BY=add_subdirectory
            ${row_DEFINE}
        OUTPUT_QUIET
        COMMAND_ERROR_IS_FATAL ANY)
    file(READ ${WORK}/compile_commands.json commands)
    string(JSON count LENGTH "${commands}")
    math(EXPR last "${count} - 1")
    set(of_library 0)
    set(has_some FALSE)
    foreach(i RANGE ${last})
        string(JSON command GET "${commands}" ${i} command)
        if(NOT command MATCHES "brackwell\\.dir")
            continue()
        endif()
        math(EXPR of_library "${of_library} + 1")
        if(row_SOME AND command MATCHES "${row_SOME}")
            set(has_some TRUE)
        endif()
        foreach(expression IN LISTS row_EXPECT)
            if(NOT command MATCHES "${expression}")
                message(FATAL_ERROR "With ${row_DEFINE} there is no ${expression} in\n${command}")
            endif()
        endforeach()
        foreach(expression IN LISTS row_REJECT)
            if(command MATCHES "${expression}")
                message(FATAL_ERROR "With ${row_DEFINE} there is ${expression} in\n${command}")
            endif()
        endforeach()
    endforeach()
    if(of_library EQUAL 0)
        message(FATAL_ERROR "No source of the library is compiled")
    endif()
    if(row_SOME AND NOT has_some)
        message(FATAL_ERROR "With ${row_DEFINE} no command has ${row_SOME}")
    endif()
endfunction()

# Compiles SOURCE_FILE with the command that the last project has for it.
function(compile source_file)
    file(READ ${WORK}/compile_commands.json commands)
    string(REGEX MATCH "\"command\": \"([^\"]*${source_file})\"" command "${commands}")
    set(command "${CMAKE_MATCH_1}")
    if(NOT command)
        message(FATAL_ERROR "No command compiles ${source_file}")
    endif()
    string(REGEX REPLACE " -o [^ ]+" " -o /dev/null" command "${command}")
    execute_process(COMMAND sh -c "${command}" WORKING_DIRECTORY ${WORK} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(alone BRACKWELL_TOOL=OFF BRACKWELL_TESTS=OFF BRACKWELL_BENCHMARKS=OFF)
set(warnings " -W([a-mo-z]|n[^o])" " -pedantic")

expect_commands(${CONSUMER}
    EXPECT " -DCONSUMER_ASKS" " -std=c\\+\\+20" " -fPIC"
    REJECT ${warnings})
expect_commands(${CONSUMER}
    DEFINE CMAKE_POSITION_INDEPENDENT_CODE=OFF CMAKE_CXX_STANDARD=23
    EXPECT " -std=c\\+\\+(23|2b)"
    REJECT ${warnings} " -fPIC")
expect_commands(${CONSUMER}
    DEFINE CMAKE_CXX_STANDARD=17 CMAKE_UNITY_BUILD=ON CMAKE_UNITY_BUILD_BATCH_SIZE=7
    SOME "unity_[0-9]+_cxx"
    EXPECT " -std=c\\+\\+20")
# Where some compilers see mistakes that are none.
expect_commands(${CONSUMER}
    DEFINE "CMAKE_CXX_FLAGS=-O3 -Wall -Wextra -Werror"
    EXPECT " -Werror")
compile(src/open/explanation.cpp)
file(REMOVE_RECURSE ${WORK})
expect_commands(${SOURCE}
    DEFINE ${alone} CMAKE_POSITION_INDEPENDENT_CODE=OFF CMAKE_CXX_STANDARD=23
    EXPECT " -std=c\\+\\+(23|2b)"
    REJECT ${warnings} " -fPIC")
expect_commands(${SOURCE}
    DEFINE ${alone} BRACKWELL_WARNINGS=ON
    EXPECT " -Wall" " -Wconversion"
    REJECT " -Werror")
file(REMOVE_RECURSE ${WORK})
