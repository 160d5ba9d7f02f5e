# WebAssembly with the system interface WASI, by clang. It has no exceptions and no threads.
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_CXX_COMPILER_TARGET wasm32-wasi)
# What is optimised while it is linked can be read by programs of the compiler's own version alone.
set(CMAKE_AR llvm-ar-19)
set(CMAKE_RANLIB llvm-ranlib-19)
set(CMAKE_SYSROOT /usr)
# The C++ headers of this target alone: by itself the compiler also looks into /usr/include/c++, where those of this
# machine are that belong to the same library.
set(CMAKE_CXX_FLAGS_INIT
    "-fno-exceptions -nostdinc++ -isystem ${CMAKE_SYSROOT}/include/wasm32-wasi/c++/v1")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,--strip-all")
set(CMAKE_FIND_ROOT_PATH /usr/lib/wasm32-wasi)
set(CMAKE_POSITION_INDEPENDENT_CODE OFF)  # programs are linked whole, and without it they are smaller
