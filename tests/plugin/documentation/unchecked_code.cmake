# Checks that pages with unchecked code or wrong output are reported:
#   cmake -D host=PROGRAM -D plugin=LIBRARY -D folder=FOLDER -P unchecked_code.cmake
set(print "```xojo\nPrint \"a\"\n```\n")
set(method "```xojo\nFunction Twice(text As String) As String\n  Return text + text\nEnd Function\n```\n")
set(table "| If | Code | Result |\n|---|---|---|\n")
set(count 0)

# Expects the check of the page to report the message, or to succeed if the message is empty.
function(expect message page)
  file(WRITE ${folder}/page.md "${page}")
  execute_process(COMMAND ${host} --plugin ${plugin} examples ${folder}/page.md
    ERROR_VARIABLE errors OUTPUT_QUIET RESULT_VARIABLE status)
  string(FIND "${errors}" "${message}" at)
  if((message STREQUAL "" AND NOT status EQUAL 0) OR (NOT message STREQUAL "" AND (status EQUAL 0 OR at EQUAL -1)))
    message(SEND_ERROR "expected \"${message}\" for:\n${page}\nbut status ${status}:\n${errors}")
  endif()
endfunction()

expect("" "${print}\n```text\na\n```\n")
expect("" "${method}\nText.\n${table}| twice | `Twice(\"a\")` | aa |\n| a result of statements | `Var s As String = \"b\"`, `Twice(s)` | bb |\n")
expect("page.md:1: prints\na\n" "${print}\n```text\nb\n```\n")
expect("page.md:9: prints\naa\n" "${method}\n${table}| twice | `Twice(\"a\")` | a |\n")
expect("line 1: neither a block of text nor a table of results follows" "${print}\nThe end.\n")
expect("line 1: neither a block of text nor a table of results follows" "${print}${print}\n```text\na\n```\n")
expect("line 1: no example calls this method" "${method}${print}\n```text\na\n```\n")
expect("line 1: unknown language 'vb'" "```vb\nPrint \"a\"\n```\n")
expect("line 1: unknown language ''" "```\nPrint \"a\"\n```\n")
expect("line 3: this row has no code" "${table}| a | b | c |\n")
