#include "platform/linux/pango_calls.h"

#include <dlfcn.h>

#include <optional>

namespace zkt {

namespace {

std::optional<PangoCalls> LoadPango() {
  // This library brings the others with it, and its handle finds their names too. It is never closed: GLib's types
  // cannot be registered twice, and fonts stay in use by caches.
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

}  // namespace

const PangoCalls* FindPango() {
  static const std::optional<PangoCalls> calls = LoadPango();
  return calls ? &*calls : nullptr;
}

}  // namespace zkt
