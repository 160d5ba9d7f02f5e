# A project that wants the library, and the tool, installed beside what it installs itself.

set(BRACKWELL_INSTALL ON)
set(BRACKWELL_TOOL ${BRACKWELL_WITH_TOOL})
add_subdirectory(${BRACKWELL_SOURCE} brackwell)
set(brackwell brackwell::brackwell)
target_compile_definitions(brackwell PRIVATE CONSUMER_ASKS)
