# Proves that wrong rows do not compile, and that it is the check which stops them:
#   cmake -D compiler=CXX -D source=FILE -D include=FOLDER -P refused_rows.cmake
foreach(row RANGE 0 5)
  execute_process(
    COMMAND ${compiler} -std=c++20 -fsyntax-only -D ROW=${row} -I ${include} ${source}
    RESULT_VARIABLE status ERROR_VARIABLE words)
  if(row EQUAL 0)
    if(NOT status EQUAL 0)
      message(FATAL_ERROR "The right row does not compile:\n${words}")
    endif()
  elseif(status EQUAL 0 OR NOT words MATCHES "DeclarationDisagreesWithNativeFunction|DoubleNeedsAccessorsOfOurOwn")
    message(FATAL_ERROR "Row ${row} is not refused by the check:\n${words}")
  endif()
endforeach()
