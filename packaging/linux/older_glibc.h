// Stands before every source of a library for Linux that is handed out, so that it loads on systems older than the one
// that built it.
#pragma once

// The C++ library looks at this variable, which C libraries have since 2.32, to save atomic operations in processes of
// one thread. One of our own says that there are others, which is always right.
extern "C" {
__attribute__((weak, visibility("hidden"))) char __libc_single_threaded = 0;
}

// Functions that moved from libdl and libpthread to libc in 2.32 and 2.34 and got a new version there, though nothing
// else changed.
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
