# A project inside another one brings the library and nothing else, and is compiled as the other one wants it.

set(brackwell brackwell::brackwell)
get_target_property(options brackwell COMPILE_OPTIONS)
if(options MATCHES "-W([^n]|n[^o])" OR BRACKWELL_INSTALL OR BRACKWELL_TOOL OR BRACKWELL_TESTS
   OR BRACKWELL_BENCHMARKS)
    message(FATAL_ERROR "A subproject brings more than the library")
endif()
target_compile_definitions(brackwell PRIVATE CONSUMER_ASKS)
