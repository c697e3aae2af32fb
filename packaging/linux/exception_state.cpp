// What the C++ library knows of the exceptions of each thread, in a place that every thread has from its beginning. The
// place that the library has for it, when it is inside a library that is loaded at run time, gets its memory at a
// thread's first exception; without memory the C library ends the process, which no bad_alloc would survive.
#include <cxxabi.h>

namespace __cxxabiv1 {

struct __cxa_eh_globals {
  void* caughtExceptions;
  unsigned uncaughtExceptions;
};

namespace {

constinit thread_local __cxa_eh_globals state __attribute__((tls_model("initial-exec"))) = {};

}  // namespace

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept { return &state; }
extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept { return &state; }

}  // namespace __cxxabiv1
