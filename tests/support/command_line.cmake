# Sets `command` to the program and its arguments, which follow the script on the command line:
#   cmake -D NAME=VALUE -P SCRIPT PROGRAM...
set(command "")
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE 5 ${last})
  list(APPEND command "${CMAKE_ARGV${i}}")
endforeach()
