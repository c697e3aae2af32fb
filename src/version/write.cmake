# Writes the source file with the version and the commit, unless it is up to date: cmake -D version=VERSION -D
# input=FILE -D output=FILE -P write.cmake This script runs in every build. After a new commit, only that source file is
# recompiled. The ZKT_COMMIT environment variable overrides the commit, for example if there is no repository.
set(commit "$ENV{ZKT_COMMIT}")
if(NOT commit)
  cmake_path(GET input PARENT_PATH folder)
  execute_process(COMMAND git -C ${folder} describe --always --abbrev=12 --exclude=* --dirty=-changed
    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(NOT commit)
  set(commit unknown)
endif()
configure_file(${input} ${output} @ONLY)
