// Interposes malloc, free, operator new and delete for all libraries. While nothing is watched and no failure is
// injected, this costs one branch per request.
#include "stress/memory.h"

#include <dlfcn.h>
#include <execinfo.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <new>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace stress {

constinit PluginMemory gPluginMemory;

namespace {

// Set while code in this file runs, so that its own requests pass through.
constinit thread_local bool gIsInterposing = false;

const link_map* OwnerOf(void* code) {
  dl_find_object found;
  return ::_dl_find_object(code, &found) == 0 ? found.dlfo_link_map : nullptr;
}

bool IsCaller(const link_map* owner) { return std::ranges::count(gPluginMemory.callers, owner) > 0; }

bool IsOnBehalfOfPlugin(void* code) {
  const link_map* const owner = OwnerOf(code);
  if (!IsCaller(owner)) return owner == gPluginMemory.plugin;
  // The frames before the caller belong to this file.
  std::array<void*, 24> frames;
  const auto end = frames.begin() + ::backtrace(frames.data(), frames.size());
  const auto caller = std::find(frames.begin(), end, code);
  const auto first = std::find_if(caller, end, [](void* frame) { return !IsCaller(OwnerOf(frame)); });
  return first != end && OwnerOf(*first) == gPluginMemory.plugin;
}

// Counts a block as allocated or freed. Takes a lock, because library threads also allocate and free.
void Count(void* block, bool isAllocated) {
  static constinit std::mutex mutex;
  const std::lock_guard lock(mutex);
  static auto* const blocks =
      new std::unordered_set<void*>;  // never destroyed, because memory is freed until the process ends
  if (isAllocated)
    blocks->insert(block);
  else
    blocks->erase(block);
  gPluginMemory.blocks = blocks->size();
}

// Serves a memory request. Returns null if it fails or is made to fail.
template <class Request>
void* Allocate(void* caller, const Request& request) {
  PluginMemory& memory = gPluginMemory;
  if (gIsInterposing || (!memory.isWatched && !memory.requests.IsArmed())) return request();
  gIsInterposing = true;
  const bool isPlugin = IsOnBehalfOfPlugin(caller);
  const bool fails = isPlugin && memory.requests.ShouldFail();
  void* const block = fails ? nullptr : request();
  // When memory runs out, the C library keeps some blocks for itself. That is not a leak in the plug-in.
  const bool isCounted = memory.isWatched && (!memory.requests.IsArmed() || OwnerOf(caller) == memory.plugin);
  if (isPlugin && isCounted && block != nullptr) Count(block, true);
  gIsInterposing = false;
  if (fails) errno = ENOMEM;
  return block;
}

// Until a block is counted, this function only reads the count, because little else works during process startup.
void Forget(void* block) {
  if (gPluginMemory.blocks == 0 || std::exchange(gIsInterposing, true)) return;
  Count(block, false);
  gIsInterposing = false;
}

// The next definition of a function that this file replaces.
template <class Function>
struct Next {
  const char* name;
  Function* function = nullptr;

  template <class... Arguments>
  auto operator()(Arguments... arguments) {
    if (function == nullptr) function = reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
    return function(arguments...);
  }
};
constinit Next<void*(std::size_t)> gMalloc{"malloc"};
constinit Next<void*(std::size_t, std::size_t)> gCalloc{"calloc"};
constinit Next<void*(void*, std::size_t)> gRealloc{"realloc"};
constinit Next<void(void*)> gFree{"free"};

void* AllocateOrNull(void* caller, std::size_t size) {
  return Allocate(caller, [=] { return gMalloc(size); });
}

void* AllocateOrThrow(void* caller, std::size_t size) {
  void* const block = AllocateOrNull(caller, size);
  return block != nullptr ? block : throw std::bad_alloc();
}

}  // namespace

void SetWatchedPlugin(void* library) {
  gPluginMemory.plugin = static_cast<const link_map*>(library);
  for (const link_map* map = _r_debug.r_map; map != nullptr; map = map->l_next) {
    const std::string_view path = map->l_name;
    for (const char* const name : {"libc.", "libm.", "libstdc++.", "libc++", "libgcc_s.", "libunwind.", "ld-linux",
                                   "libasan.", "libubsan.", "libclang_rt."})
      if (path.substr(path.rfind('/') + 1).starts_with(name)) gPluginMemory.callers.push_back(map);
  }
}

}  // namespace stress

using namespace stress;

// This is a macro, because a function would return an address in this file instead of one in the code that requests
// memory.
#define ZKT_CALLER __builtin_return_address(0)

extern "C" {

void* malloc(std::size_t size) noexcept { return AllocateOrNull(ZKT_CALLER, size); }

void* calloc(std::size_t count, std::size_t size) noexcept {
  return Allocate(ZKT_CALLER, [=] { return gCalloc(count, size); });
}

void* realloc(void* block, std::size_t size) noexcept {
  void* const moved = Allocate(ZKT_CALLER, [=] { return gRealloc(block, size); });
  if (moved != block && (moved != nullptr || size == 0)) Forget(block);
  return moved;
}

void free(void* block) noexcept {
  // The lookup of the next `free` can itself free a string. That string is leaked.
  static constinit bool isLookingUp = false;
  if (gFree.function == nullptr && std::exchange(isLookingUp, true)) return;
  Forget(block);
  gFree(block);
}

}  // extern "C"

void* operator new(std::size_t size) { return AllocateOrThrow(ZKT_CALLER, size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(ZKT_CALLER, size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return AllocateOrNull(ZKT_CALLER, size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return AllocateOrNull(ZKT_CALLER, size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }

#undef ZKT_CALLER
