# The code blocks of Markdown pages as tests, so that no page shows what does not work:
#
#   ```cpp       a program; without main() the body of a function, after the lines that blocks.awk writes
#   ```text      after C++ code: what it prints; code without such a block must print nothing
#   ```console   a session in a folder with copies of examples/*.ofx and docs/documents/*.ofx: lines
#                "$ command" and what they print; ./NAME is the last program before
#   ```cmake     a CMakeLists.txt that must configure, with the last program before and a folder brackwell
#   ```pycon     what Python shows at its prompt, which bindings/python/tests/test_pages.py runs
#
# An output whose last line is "..." goes on in any way. A compiler's messages name the line of the page.

set(pages_folder ${CMAKE_CURRENT_LIST_DIR})

# The headers that nearly every block includes are read once. The preset clang does without, so that a page that does
# not include what it uses is found.
file(CONFIGURE OUTPUT page_headers.cpp CONTENT "")
add_library(page-headers OBJECT ${CMAKE_CURRENT_BINARY_DIR}/page_headers.cpp)
target_link_libraries(page-headers PRIVATE brackwell::brackwell)
target_compile_options(page-headers PRIVATE -O0)
target_precompile_headers(page-headers PRIVATE
    <brackwell/brackwell.h> <algorithm> <iostream> <map> <memory> <string> <vector>)

# Adds a test "pages/NAME:LINE" for each block of a page, and their names to `page_tests`.
function(add_page page)
    cmake_path(GET page STEM name)
    set(out ${CMAKE_CURRENT_BINARY_DIR}/pages/${name})
    take_blocks(${page} ${out})
    if(EXISTS ${out}/snippets.cpp)
        add_page_program(${name} ${out}/snippets.cpp)
    endif()
    foreach(block ${blocks})
        separate_arguments(block)
        list(GET block 0 kind)
        list(GET block 1 line)
        if(kind STREQUAL "build")
            add_page_program(${name}-${line} ${out}/${line}.cpp)
            continue()
        endif()
        set_run(${block})
        set(test "pages/${name}:${line}")
        add_test(NAME ${test} COMMAND ${CMAKE_COMMAND} -D FOLDER=${out}/${line} ${run})
        list(APPEND page_tests ${test})
    endforeach()
    return(PROPAGATE page_tests)
endfunction()

# Writes the blocks of the page into files; `blocks` says what to do with them. A file that is the same
# as before keeps its time, so that it is not compiled again.
function(take_blocks page out)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page} ${pages_folder}/blocks.awk)
    set(fresh ${out}/fresh)
    file(REMOVE_RECURSE ${fresh})
    file(MAKE_DIRECTORY ${fresh})
    execute_process(
        COMMAND awk -v out=${fresh} -f ${pages_folder}/blocks.awk ${page}
        OUTPUT_VARIABLE blocks
        COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "\n$" "" blocks "${blocks}")
    string(REPLACE "\n" ";" blocks "${blocks}")
    file(GLOB files RELATIVE ${fresh} ${fresh}/*)
    foreach(file ${files})
        file(COPY_FILE ${fresh}/${file} ${out}/${file} ONLY_IF_DIFFERENT)
    endforeach()
    return(PROPAGATE blocks)
endfunction()

function(add_page_program name source)
    add_executable(page-${name} ${source})
    target_link_libraries(page-${name} PRIVATE brackwell::brackwell)
    # They run once and for a moment, so most of their time is compilation.
    target_compile_options(page-${name} PRIVATE -O0)
    target_precompile_headers(page-${name} REUSE_FROM page-headers)
    set_target_properties(page-${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${out}/bin OUTPUT_NAME ${name})
endfunction()

# Sets `run` to the arguments of cmake that run a block.
function(set_run kind line)
    list(APPEND ARGN "" "")
    list(GET ARGN 0 program)
    list(GET ARGN 1 link)
    set(command_program "'${out}/bin/${name}-${line}'")
    set(command_snippet "'${out}/bin/${name}' ${line}")
    set(command_session "sh '${pages_folder}/run_session.sh' '${out}/${line}.expected'")
    if(kind STREQUAL "project")
        set(run
            -D PROJECT=${out}/${line}.cmake
            -D PROGRAM=${out}/${program}.cpp
            -D BRACKWELL=${PROJECT_SOURCE_DIR}
            -D COMPILER=${CMAKE_CXX_COMPILER}
            -D GENERATOR=${CMAKE_GENERATOR}
            -P ${pages_folder}/configure_project.cmake)
    else()
        set(run
            -D COMMAND=${command_${kind}}
            -D EXPECTED=${out}/${line}.expected
            -D LINK=${link}
            -D TARGET=${out}/bin/${name}-${program}
            -D ROOT=${PROJECT_SOURCE_DIR}
            -D TOOL=$<TARGET_FILE_DIR:brackwell-tool>
            -P ${pages_folder}/run_block.cmake)
    endif()
    return(PROPAGATE run)
endfunction()
