# Uses clang and libc++, the compiler and C++ library of macOS, on Linux.
set(CMAKE_C_COMPILER clang-19)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_CXX_FLAGS_INIT "-stdlib=libc++ -fexperimental-library")
# The stress checks replace malloc and call the sanitizer's version, so that version must be in a shared library.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-shared-libsan -Wl,-rpath,/usr/lib/llvm-19/lib/clang/19/lib/linux")
