include(${CMAKE_CURRENT_LIST_DIR}/header_library.cmake)
header_library(CLI11::CLI11 CLI)
