# Windows on x86 with 64 bits, by mingw-w64. What it would take from shared libraries is in the programs.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_CXX_FLAGS_INIT -Wa,-mbig-obj)  # a large piece has more sections than objects have by default
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
