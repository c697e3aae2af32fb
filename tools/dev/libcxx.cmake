# clang and libc++, which are the compiler and the C++ library of macOS, on Linux.
set(CMAKE_C_COMPILER clang-19)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_CXX_FLAGS_INIT "-stdlib=libc++ -fexperimental-library")
# The stress checks replace malloc by a function that calls the sanitizer's, so that this one must be in a library. glibc
# unwinds a thread that ends with libgcc's functions; linked first, they serve exceptions too, instead of LLVM's own,
# which cannot read the same data.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-shared-libsan -Wl,-rpath,/usr/lib/llvm-19/lib/clang/19/lib/linux \
-Wl,--push-state,--no-as-needed,-lgcc_s,--pop-state")
