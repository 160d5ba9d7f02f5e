# Fills the folder FOLDER with downloads, those of the project DOCUMENTS and some that are none, lets PROGRAM read it, and
# fails unless it prints what expected.txt has.

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER}/folder.ofx)
foreach(document card checking checking_april errors household investments quirks windows_1252)
    file(COPY ${DOCUMENTS}/examples/${document}.ofx DESTINATION ${FOLDER})
endforeach()
foreach(document broken own_formats)
    file(COPY ${DOCUMENTS}/docs/documents/${document}.ofx DESTINATION ${FOLDER})
endforeach()
file(COPY_FILE ${DOCUMENTS}/examples/checking.ofx ${FOLDER}/checking_again.qfx)
file(READ ${DOCUMENTS}/examples/card.ofx card)
string(LENGTH "${card}" length)
math(EXPR half "${length} / 2")
string(SUBSTRING "${card}" 0 ${half} half_a_card)
file(WRITE ${FOLDER}/half.ofx "${half_a_card}")
string(REPLACE "<TRNAMT>-38.20</TRNAMT>" "" card_without_amount "${card}")
file(WRITE ${FOLDER}/lost_amount.ofx "${card_without_amount}")
file(WRITE ${FOLDER}/session_ended.qfx "<!DOCTYPE html>\n<html><body>Please sign in again.</body></html>\n")
file(WRITE ${FOLDER}/nothing.ofx "")
file(WRITE ${FOLDER}/notes.txt "Not a download.\n")

set(ENV{TZ} UTC)
execute_process(
    COMMAND ${PROGRAM} ${FOLDER}
    OUTPUT_VARIABLE output
    RESULT_VARIABLE result
    TIMEOUT 60)
file(READ ${CMAKE_CURRENT_LIST_DIR}/expected.txt expected)
if(NOT result EQUAL 0 OR NOT output STREQUAL expected)
    message("${output}")
    message(FATAL_ERROR "The application ended with ${result}, or printed what is not expected")
endif()

execute_process(COMMAND ${PROGRAM} ${FOLDER}/none RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE message)
if(NOT result EQUAL 1 OR NOT message MATCHES "No such file")
    message(FATAL_ERROR "A folder that is not there: ${result}, ${message}")
endif()
