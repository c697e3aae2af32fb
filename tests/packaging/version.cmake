# Fails unless the changelog begins with a dated section for the version, and every version number on a page is this
# version:
#   cmake -D version=VERSION -D library=FILE -D host=PROGRAM -P version.cmake
cmake_path(SET root NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../..)
file(STRINGS ${root}/CHANGELOG.md sections REGEX "^## ")
list(GET sections 0 section)
if(NOT section MATCHES "^## ${version} - 20[0-9][0-9]-[01][0-9]-[0-3][0-9]$")
  message(SEND_ERROR "CHANGELOG.md begins with \"${section}\", and the version is ${version}")
endif()

file(GLOB pages ${root}/README.md ${root}/SECURITY.md ${root}/docs/*.md ${root}/docs/*/*.md)
set(count 0)
foreach(page IN LISTS pages)
  file(READ ${page} text)
  string(REGEX MATCHALL "(ZKTUtil[ -]|release-|ersion )[0-9]+\\.[0-9]+\\.[0-9]+" names "${text}")
  foreach(name IN LISTS names)
    math(EXPR count "${count} + 1")
    if(NOT name MATCHES "[ -]${version}$")
      message(SEND_ERROR "${page} names ${name}, and the version is ${version}")
    endif()
  endforeach()
endforeach()
if(count EQUAL 0)
  message(SEND_ERROR "no page names the version")
endif()

# The linker keeps the text although nothing refers to it.
file(STRINGS ${library} texts REGEX "@\\(#\\)ZKTUtil ${version}, commit [0-9a-z-]+$")
list(LENGTH texts count)
execute_process(COMMAND ${host} --version OUTPUT_VARIABLE shown COMMAND_ERROR_IS_FATAL ANY)
string(STRIP "${shown}" shown)
if(NOT count EQUAL 1 OR NOT texts MATCHES "${shown}")
  message(SEND_ERROR "the library has the version \"${texts}\", and xojo-host ${shown}")
endif()
