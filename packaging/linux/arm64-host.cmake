# Builds the development host and the tests for arm64, with the Debian packages that fetch_arm64_system.sh downloads.
include(${CMAKE_CURRENT_LIST_DIR}/arm64.cmake)
set(system ${root}/build/package/arm64-system/root)
set(ENV{PKG_CONFIG_LIBDIR} ${system}/usr/lib/aarch64-linux-gnu/pkgconfig:${system}/usr/share/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${system})
string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem ${system}/usr/include/aarch64-linux-gnu")
set(CMAKE_LIBRARY_PATH ${system}/usr/lib/aarch64-linux-gnu ${system}/lib/aarch64-linux-gnu)
foreach(folder IN ITEMS ${system}/usr/lib/aarch64-linux-gnu ${system}/lib/aarch64-linux-gnu)
  string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -Wl,-rpath-link,${folder}")
endforeach()
# qemu's -L option would do the same, but when cmake runs a script, it interprets -L as its own option.
set(CMAKE_CROSSCOMPILING_EMULATOR env QEMU_LD_PREFIX=${system} qemu-aarch64)
