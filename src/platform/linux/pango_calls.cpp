#include "platform/linux/pango_calls.h"

#include <dlfcn.h>
#include <pthread.h>

#include <atomic>
#include <optional>

namespace zkt {

namespace {

std::optional<PangoCalls> LoadPango() {
  // This library loads the other libraries, and its handle gives access to their symbols as well. The handle is never
  // closed, because GLib's types cannot be registered twice, and because the libraries' caches keep using fonts.
  void* const library = ::dlopen("libpangocairo-1.0.so.0", RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return std::nullopt;
  PangoCalls calls;
  bool isComplete = true;
#define ZKT_FIND(name, signature) calls.name = reinterpret_cast<decltype(calls.name)>(::dlsym(library, #name));
#define ZKT_FIND_NEEDED(name, signature) \
  ZKT_FIND(name, signature)              \
  isComplete = isComplete && calls.name != nullptr;
  ZKT_PANGO_CALLS(ZKT_FIND_NEEDED)
  ZKT_OPTIONAL_PANGO_CALLS(ZKT_FIND)
#undef ZKT_FIND
#undef ZKT_FIND_NEEDED
  return isComplete ? std::optional(calls) : std::nullopt;
}

void* PassThrough(void* gate) {
  ::pthread_mutex_lock(static_cast<pthread_mutex_t*>(gate));
  ::pthread_mutex_unlock(static_cast<pthread_mutex_t*>(gate));
  return nullptr;
}

// Returns whether the process can start as many threads as Pango needs to find its fonts.
bool CanStartThreads() {
  constexpr int kCount = 3;
  pthread_t threads[kCount];
  pthread_mutex_t gate = PTHREAD_MUTEX_INITIALIZER;
  ::pthread_mutex_lock(&gate);
  int started = 0;
  while (started < kCount && ::pthread_create(&threads[started], nullptr, &PassThrough, &gate) == 0) ++started;
  ::pthread_mutex_unlock(&gate);
  for (int i = 0; i < started; ++i) ::pthread_join(threads[i], nullptr);
  return started == kCount;
}

}  // namespace

const PangoCalls* FindPango() {
  static const std::optional<PangoCalls> calls = LoadPango();
  if (!calls) return nullptr;
  // GLib ends the process if it cannot start a thread. One successful check is enough, because Pango starts threads
  // only for the first text.
  static std::atomic<bool> hasStartedThreads{false};
  if (!hasStartedThreads.load(std::memory_order_relaxed)) {
    if (!CanStartThreads()) return nullptr;
    hasStartedThreads.store(true, std::memory_order_relaxed);
  }
  return &*calls;
}

}  // namespace zkt
