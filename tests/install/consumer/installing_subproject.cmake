# A project that wants the library installed beside what it installs itself.

set(BRACKWELL_INSTALL ON)
add_subdirectory(${BRACKWELL_SOURCE} brackwell)
set(brackwell brackwell::brackwell)
