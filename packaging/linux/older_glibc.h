// Included before every source file of a distributed library for Linux, so that the library also loads on systems that
// are older than the build machine.
#pragma once

// The C++ library reads this variable, which glibc has provided since 2.32, to avoid atomic operations in
// single-threaded processes. The value 0 means that the process may have several threads, which is always safe to
// assume.
extern "C" {
__attribute__((weak, visibility("hidden"))) char __libc_single_threaded = 0;
}

// These functions moved from libdl and libpthread to libc in glibc 2.32 and 2.34. They received new symbol versions but
// did not change otherwise.
#if defined(__x86_64__)
__asm__(".symver dladdr1,dladdr1@GLIBC_2.3.3");
__asm__(".symver dlopen,dlopen@GLIBC_2.2.5");
__asm__(".symver dlsym,dlsym@GLIBC_2.2.5");
__asm__(".symver pthread_create,pthread_create@GLIBC_2.2.5");
__asm__(".symver pthread_getspecific,pthread_getspecific@GLIBC_2.2.5");
__asm__(".symver pthread_join,pthread_join@GLIBC_2.2.5");
__asm__(".symver pthread_key_create,pthread_key_create@GLIBC_2.2.5");
__asm__(".symver pthread_setspecific,pthread_setspecific@GLIBC_2.2.5");
__asm__(".symver pthread_sigmask,pthread_sigmask@GLIBC_2.2.5");
#elif defined(__aarch64__)
__asm__(".symver dladdr1,dladdr1@GLIBC_2.17");
__asm__(".symver dlopen,dlopen@GLIBC_2.17");
__asm__(".symver dlsym,dlsym@GLIBC_2.17");
__asm__(".symver pthread_create,pthread_create@GLIBC_2.17");
__asm__(".symver pthread_getspecific,pthread_getspecific@GLIBC_2.17");
__asm__(".symver pthread_join,pthread_join@GLIBC_2.17");
__asm__(".symver pthread_key_create,pthread_key_create@GLIBC_2.17");
__asm__(".symver pthread_setspecific,pthread_setspecific@GLIBC_2.17");
__asm__(".symver pthread_sigmask,pthread_sigmask@GLIBC_2.17");
#endif
