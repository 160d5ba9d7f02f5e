# header_library(TARGET FOLDER)
# Makes a target of a folder of headers, whose code is the same on every system. A link makes it seen, and nothing beside
# it: in /usr/include there are this system's headers, too.
function(header_library target folder)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/headers)
    file(CREATE_LINK /usr/include/${folder} ${PROJECT_BINARY_DIR}/headers/${folder} SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED)
    target_include_directories(${target} INTERFACE ${PROJECT_BINARY_DIR}/headers)
endfunction()
