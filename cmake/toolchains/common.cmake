# What the targets of script/portable share. Libraries and headers of this machine are for this machine; but for headers
# that are the same everywhere, which headers/ finds one by one.

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CLI11_DIR ${CMAKE_CURRENT_LIST_DIR}/headers)
set(tomlplusplus_DIR ${CMAKE_CURRENT_LIST_DIR}/headers)
