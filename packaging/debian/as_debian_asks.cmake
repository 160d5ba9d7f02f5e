# What Debian asks of the files of a package and CPack does not do.

# Programs and libraries are without what only debuggers and the curious read.
file(GLOB binaries ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/bin/*)
file(GLOB_RECURSE libraries ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/libbrackwell.so.*)
file(GLOB_RECURSE extensions ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/python/*/_core.*.so)
foreach(file ${binaries} ${libraries} ${extensions})
    if(NOT IS_SYMLINK ${file})
        execute_process(
            COMMAND strip --strip-unneeded --remove-section=.comment --remove-section=.note ${file}
            COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()

# Manual pages and changelogs are compressed.
file(GLOB_RECURSE files
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/man/man*/*
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/doc/*/changelog*)
foreach(file ${files})
    execute_process(COMMAND gzip --best --no-name ${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# Debian's zsh looks for what packages complete in a folder of its own.
set(zsh ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/tool/usr/share/zsh)
file(RENAME ${zsh}/site-functions ${zsh}/vendor-completions)
