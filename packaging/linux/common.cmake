# Builds distributable libraries for Linux. The C++ library is linked statically, because the system's version may be
# older. The unwinder is linked dynamically, because the unwinder that throws an exception must also unwind every frame
# that the exception passes through. The library links with libdl and libpthread, because older systems have dlopen in
# libdl, and the functions for threads and thread keys in libpthread.
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH root)
cmake_path(GET root PARENT_PATH root)
set(ZKT_STATIC_LIBSTDCXX ON)
# src/CMakeLists.txt selects a higher optimization level for the sources that benefit from it.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG" CACHE STRING "")
string(JOIN " " CMAKE_CXX_FLAGS_INIT
  -g
  -ffunction-sections -fdata-sections
  -ffile-prefix-map=${root}=/ZKTUtil
  "-include ${CMAKE_CURRENT_LIST_DIR}/older_glibc.h")
string(JOIN " " CMAKE_SHARED_LINKER_FLAGS_INIT
  -static-libstdc++
  -Wl,--gc-sections,--build-id=sha1
  -Wl,-z,relro,-z,now,-z,noexecstack
  -Wl,--push-state,--no-as-needed,-l:libdl.so.2,-l:libpthread.so.0,--pop-state)
