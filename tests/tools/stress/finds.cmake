# Runs the stress checks. Fails unless they end with status 1 and report exactly one failure, which matches the
# expression. The command that replays the failure must have the same result:
#   cmake -D wanted=REGEX -P finds.cmake PROGRAM ARGUMENTS...
include(${CMAKE_CURRENT_LIST_DIR}/../../support/command_line.cmake)

function(expect_failure)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE status)
  string(REGEX MATCHALL "FAILED " failures "${output}")
  list(LENGTH failures count)
  if(NOT status EQUAL 1 OR NOT count EQUAL 1 OR NOT output MATCHES "${wanted}")
    message(FATAL_ERROR "${ARGN}: expected status 1 and one failure that matches\n${wanted}\nbut got status ${status} and ${count} failures:\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

expect_failure(${command})
string(REGEX MATCH "  replay: ([^\n]*)" line "${output}")
expect_failure(sh -c "${CMAKE_MATCH_1}")
