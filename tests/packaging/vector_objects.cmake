# Fails if an object file of the vector sort shares code with the rest of the library or has an unnecessary dependency:
#   cmake -D nm=NM -D "objects=FILE;FILE" -P vector_objects.cmake
# The linker keeps only one copy of a weak function, and that copy might use instructions that only newer processors
# have.
set(count 0)
foreach(object IN LISTS objects)
  if(NOT object MATCHES "vector_sort_(sse4|avx2|avx512|neon)")
    continue()
  endif()
  math(EXPR count "${count} + 1")
  execute_process(COMMAND ${nm} ${object} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" lines "${symbols}")
  foreach(line IN LISTS lines)
    if(line MATCHES " [abdnrtN] ")
      continue()
    elseif(line MATCHES " T _ZN3zkt11vector_sort[0-9]+Sort[A-Za-z0-9]+EP[ilx]m$")
      continue()
    elseif(line MATCHES " U (_ZN3hwy6Sorter11Fill24BytesEPKvmPv|mem(cpy|move|set)|__stack_chk_(fail|guard)|_GLOBAL_OFFSET_TABLE_)$")
      continue()
    elseif(line MATCHES " V __libc_single_threaded$")  # defined in every object file, for older C libraries
      continue()
    elseif(line MATCHES "san_|_Unwind_Resume|__gxx_personality")  # needed by sanitizers
      continue()
    endif()
    message(SEND_ERROR "${object}: ${line}")
  endforeach()
endforeach()
if(count EQUAL 0)
  message(FATAL_ERROR "no object file of the vector sort was found")
endif()
