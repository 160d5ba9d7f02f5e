add_subdirectory(${BRACKWELL_SOURCE} brackwell)
include(subproject.cmake)
