# The shared library LIBRARY asks the loader for the standard C++ and C libraries and for nothing else.

cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND objdump -p ${LIBRARY} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "NEEDED +[^ \n]+" needed "${headers}")
list(TRANSFORM needed REPLACE "NEEDED +" "")
if(NOT "libc.so.6" IN_LIST needed)
    message(FATAL_ERROR "The C library is not among what it needs: ${needed}")
endif()
list(FILTER needed EXCLUDE REGEX "^(libc|libm|libstdc\\+\\+|libgcc_s|ld-linux[a-z0-9_-]*)\\.so\\.[0-9]+$")
if(needed)
    message(FATAL_ERROR "It needs ${needed}")
endif()
