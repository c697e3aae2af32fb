# Fails unless xojo-host validate ends with status 1 and prints what matches: -D wanted=REGEX -P convicts.cmake PROGRAM ...
include(${CMAKE_CURRENT_LIST_DIR}/../support/command_line.cmake)
execute_process(COMMAND ${command} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE status)
if(NOT status EQUAL 1 OR NOT output MATCHES "${wanted}")
  message(FATAL_ERROR "status ${status}, and not \"${wanted}\" in\n${output}")
endif()
