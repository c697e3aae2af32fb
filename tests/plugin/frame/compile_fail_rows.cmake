# Tests that mismatched rows do not compile, and that a check of the declarations is what rejects them:
#   cmake -D compiler=CXX -D source=FILE -D include=FOLDER -P compile_fail_rows.cmake
foreach(row RANGE 0 5)
  execute_process(
    COMMAND ${compiler} -std=c++20 -fsyntax-only -D ROW=${row} -I ${include} ${source}
    RESULT_VARIABLE status ERROR_VARIABLE words)
  if(row EQUAL 0)
    if(NOT status EQUAL 0)
      message(FATAL_ERROR "Row 0 must compile, but does not:\n${words}")
    endif()
  elseif(status EQUAL 0 OR NOT words MATCHES "DeclarationDisagreesWithNativeFunction|DoubleNeedsAccessorsOfOurOwn")
    message(FATAL_ERROR "Row ${row} must be rejected by the check, but is not:\n${words}")
  endif()
endforeach()
