// Where the C++ library inside our library keeps what it knows of the exceptions of each thread.
// The process's own C++ library keeps the same, in the form that the ABI prescribes (Itanium C++ ABI, 2.2.2). Both have
// to count in one place: an exception that one of them throws and the other catches would otherwise be in flight for
// ever to the first, and the host's std::uncaught_exceptions() would be wrong.
#include <cxxabi.h>
#include <dlfcn.h>

namespace __cxxabiv1 {

struct __cxa_eh_globals {
  void* caughtExceptions;
  unsigned uncaughtExceptions;
};

namespace {

using GetGlobals = __cxa_eh_globals* (*)();

// For a process without a C++ library of its own. Every thread has this place from its beginning: one that got its
// memory at a thread's first exception could not report that memory is out.
constinit thread_local __cxa_eh_globals gState __attribute__((tls_model("initial-exec"))) = {};

__cxa_eh_globals* GetOwnGlobals() { return &gState; }

constinit GetGlobals gGetGlobals = &GetOwnGlobals;

// When our library is loaded, since a thread's exceptions must not move. GCC's library only: others arrange what the
// state points to differently.
__attribute__((constructor)) void FindGlobalsOfProcess() {
  void* const library = ::dlopen("libstdc++.so.6", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) return;
  if (void* const found = ::dlsym(library, "__cxa_get_globals")) gGetGlobals = reinterpret_cast<GetGlobals>(found);
}

}  // namespace

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept { return gGetGlobals(); }
extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept { return gGetGlobals(); }

}  // namespace __cxxabiv1
