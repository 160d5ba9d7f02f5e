include(FetchContent)
# The folder is that of add_subdirectory.cmake, so that the tests build the library once for both.
FetchContent_Declare(brackwell SOURCE_DIR ${BRACKWELL_SOURCE} BINARY_DIR ${CMAKE_BINARY_DIR}/brackwell)
FetchContent_MakeAvailable(brackwell)
include(subproject.cmake)
