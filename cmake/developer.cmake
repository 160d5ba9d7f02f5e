# What holds for work on the library itself, not for a project that contains it: a build type where none was
# asked for, and warnings. Those are for developers, whose presets ask for them: who builds packages has
# other compilers and warnings of their own.

option(BRACKWELL_WARNINGS "Let the compiler warn of all that we hold to (all presets do)" OFF)
option(BRACKWELL_WARNINGS_AS_ERRORS "Stop at a compiler warning (all presets do)" OFF)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Debug, Release, RelWithDebInfo or MinSizeRel" FORCE)
endif()
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(BRACKWELL_WARNINGS_AS_ERRORS)
    set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
endif()
if(NOT BRACKWELL_WARNINGS)
    return()
endif()

add_compile_options(
    -Wall -Wextra -Wpedantic
    -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual -Wcast-align
    -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi
    -Wformat=2 -Wundef -Wunused -Wimplicit-fallthrough -Wmissing-declarations)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(
        -Wuseless-cast -Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wsuggest-override)
endif()
