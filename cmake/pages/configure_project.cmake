# Configures the project whose CMakeLists.txt is the file PROJECT, in the fresh folder FOLDER, with
# PROGRAM as its source and BRACKWELL as the folder brackwell.

cmake_minimum_required(VERSION 3.25)

file(READ ${PROJECT} project)
if(NOT project MATCHES "add_executable\\([a-z_]+ ([a-z_]+\\.cpp)\\)")
    message(FATAL_ERROR "The page shows a project without a program")
endif()
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
file(COPY_FILE ${PROGRAM} ${FOLDER}/${CMAKE_MATCH_1})
file(COPY_FILE ${PROJECT} ${FOLDER}/CMakeLists.txt)
file(CREATE_LINK ${BRACKWELL} ${FOLDER}/brackwell SYMBOLIC)
execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${FOLDER} -B ${FOLDER}/build -G ${GENERATOR} -D CMAKE_CXX_COMPILER=${COMPILER}
    COMMAND_ERROR_IS_FATAL ANY)
