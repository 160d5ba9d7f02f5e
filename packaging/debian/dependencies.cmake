# What the library needs at run time, asked when the packages are made. Where CPack itself asks for it, the
# package gets scripts that call ldconfig, instead of the trigger.

set(work ${CPACK_TOPLEVEL_DIRECTORY}/dependencies)
file(WRITE ${work}/debian/control "")
execute_process(
    COMMAND dpkg-shlibdeps -O ${CPACK_BRACKWELL_LIBRARY}
    WORKING_DIRECTORY ${work}
    OUTPUT_VARIABLE depends
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "^shlibs:Depends=" "" CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS ${depends})
