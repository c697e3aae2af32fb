# How libraries for Linux are built to be handed out. The C++ library is inside, because a system need not have one as
# new; the unwinder is the process's own, because a frame must be left by the one that an exception was thrown by.
# libdl and libpthread are where dlopen, threads and their keys are on older systems.
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH root)
cmake_path(GET root PARENT_PATH root)
set(ZKT_CXX_LIBRARY_IS_INSIDE ON)
string(JOIN " " CMAKE_CXX_FLAGS_INIT
  -ffile-prefix-map=${root}=.
  "-include ${CMAKE_CURRENT_LIST_DIR}/older_glibc.h")
string(JOIN " " CMAKE_SHARED_LINKER_FLAGS_INIT
  -static-libstdc++
  -Wl,--gc-sections,--build-id=none,--strip-all
  -Wl,-z,relro,-z,now,-z,noexecstack
  -Wl,--push-state,--no-as-needed,-l:libdl.so.2,-l:libpthread.so.0,--pop-state)
