# Installs each component of the build folder BUILD to PREFIX, which is emptied before.

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${PREFIX})
foreach(component library development tool)
    execute_process(
        COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} --component ${component}
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
