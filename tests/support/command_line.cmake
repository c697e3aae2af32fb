# Sets `command` to the program and its arguments, which stand behind: cmake -D NAME=VALUE -P SCRIPT
set(command "")
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE 5 ${last})
  list(APPEND command "${CMAKE_ARGV${i}}")
endforeach()
