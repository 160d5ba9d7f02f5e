# Compresses manual pages and changelogs of the packages, as Debian asks.

file(GLOB_RECURSE files
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/man/man*/*
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/doc/*/changelog*)
foreach(file ${files})
    execute_process(COMMAND gzip --best --no-name ${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# Debian's zsh looks for what packages complete in a folder of its own.
set(zsh ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/tool/usr/share/zsh)
file(RENAME ${zsh}/site-functions ${zsh}/vendor-completions)
