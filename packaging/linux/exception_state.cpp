// Provides the per-thread exception state of the statically linked C++ library. The process's own C++ library has such
// a state too, with the layout that the ABI defines (Itanium C++ ABI, 2.2.2). Both libraries must share one state.
// Otherwise an exception that one library throws and the other catches would never leave the first library's state, and
// the host's std::uncaught_exceptions() would be wrong.
#include <cxxabi.h>
#include <dlfcn.h>

namespace __cxxabiv1 {

struct __cxa_eh_globals {
  void* caughtExceptions;
  unsigned uncaughtExceptions;
};

namespace {

using GetGlobals = __cxa_eh_globals* (*)();

// Used in a process that has no C++ library of its own. Every thread has this storage from its start: if the storage
// were allocated on the first exception, the allocation would fail when memory has run out.
constinit thread_local __cxa_eh_globals gState __attribute__((tls_model("initial-exec"))) = {};

__cxa_eh_globals* GetOwnGlobals() { return &gState; }

constinit GetGlobals gGetGlobals = &GetOwnGlobals;

// Runs when the library is loaded, because a thread's state must not move. Looks only for GCC's C++ library, because
// other C++ libraries use a different layout for the objects that the state points to.
__attribute__((constructor)) void FindGlobalsOfProcess() {
  void* const library = ::dlopen("libstdc++.so.6", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) return;
  if (void* const found = ::dlsym(library, "__cxa_get_globals")) gGetGlobals = reinterpret_cast<GetGlobals>(found);
}

}  // namespace

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept { return gGetGlobals(); }
extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept { return gGetGlobals(); }

}  // namespace __cxxabiv1
