// The program's malloc, operator new and their opposites, which go before those of all libraries. They cost a branch
// while nothing is watched and nothing fails.
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

// What this file itself requests is passed on at once.
constinit thread_local bool gIsInside = false;

const link_map* OwnerOf(void* code) {
  dl_find_object found;
  return ::_dl_find_object(code, &found) == 0 ? found.dlfo_link_map : nullptr;
}

bool IsCaller(const link_map* owner) { return std::ranges::count(gPluginMemory.callers, owner) > 0; }

bool IsOnBehalfOfPlugin(void* code) {
  const link_map* const owner = OwnerOf(code);
  if (!IsCaller(owner)) return owner == gPluginMemory.plugin;
  // The frames before the caller are this file's.
  std::array<void*, 24> frames;
  const auto end = frames.begin() + ::backtrace(frames.data(), frames.size());
  const auto caller = std::find(frames.begin(), end, code);
  const auto first = std::find_if(caller, end, [](void* frame) { return !IsCaller(OwnerOf(frame)); });
  return first != end && OwnerOf(*first) == gPluginMemory.plugin;
}

// Counts a block as taken or given back. Threads of libraries take and give memory too.
void Count(void* block, bool isTaken) {
  static constinit std::mutex mutex;
  const std::lock_guard lock(mutex);
  static auto* const blocks = new std::unordered_set<void*>;  // never destroyed: memory is given back to the very end
  if (isTaken)
    blocks->insert(block);
  else
    blocks->erase(block);
  gPluginMemory.blocks = blocks->size();
}

// Serves a request for memory; null if it fails, or is made to.
template <class Request>
void* Take(void* caller, const Request& request) {
  PluginMemory& memory = gPluginMemory;
  if (gIsInside || (!memory.isWatched && !memory.requests.IsArmed())) return request();
  gIsInside = true;
  const bool isPlugin = IsOnBehalfOfPlugin(caller);
  const bool fails = isPlugin && memory.requests.ShouldFail();
  void* const block = fails ? nullptr : request();
  // The C library keeps some memory itself when it runs out of it.
  const bool isCounted = memory.isWatched && (!memory.requests.IsArmed() || OwnerOf(caller) == memory.plugin);
  if (isPlugin && isCounted && block != nullptr) Count(block, true);
  gIsInside = false;
  if (fails) errno = ENOMEM;
  return block;
}

// Nothing but the count is read before the first block is counted: little else works while a process starts.
void GiveBack(void* block) {
  if (gPluginMemory.blocks == 0 || std::exchange(gIsInside, true)) return;
  Count(block, false);
  gIsInside = false;
}

// What would serve a request if this library did not.
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

void* TakeOrNull(void* caller, std::size_t size) {
  return Take(caller, [=] { return gMalloc(size); });
}

void* TakeOrThrow(void* caller, std::size_t size) {
  void* const block = TakeOrNull(caller, size);
  return block != nullptr ? block : throw std::bad_alloc();
}

}  // namespace

void SetPluginOfMemory(const std::string& library) {
  gPluginMemory.plugin = static_cast<const link_map*>(::dlopen(library.c_str(), RTLD_NOW | RTLD_NOLOAD));
  for (const link_map* map = _r_debug.r_map; map != nullptr; map = map->l_next) {
    const std::string_view path = map->l_name;
    for (const char* const name : {"libc.", "libm.", "libstdc++.", "libgcc_s.", "ld-linux", "libasan.", "libubsan."})
      if (path.substr(path.rfind('/') + 1).starts_with(name)) gPluginMemory.callers.push_back(map);
  }
}

}  // namespace stress

using namespace stress;

// Here so that the caller's address is that of whoever requests.
#define ZKT_CALLER __builtin_return_address(0)

extern "C" {

void* malloc(std::size_t size) noexcept { return TakeOrNull(ZKT_CALLER, size); }

void* calloc(std::size_t count, std::size_t size) noexcept {
  return Take(ZKT_CALLER, [=] { return gCalloc(count, size); });
}

void* realloc(void* block, std::size_t size) noexcept {
  void* const moved = Take(ZKT_CALLER, [=] { return gRealloc(block, size); });
  if (moved != block && (moved != nullptr || size == 0)) GiveBack(block);
  return moved;
}

void free(void* block) noexcept {
  // Looking up the next one can free a text itself, which is lost.
  static constinit bool isLookingUp = false;
  if (gFree.function == nullptr && std::exchange(isLookingUp, true)) return;
  GiveBack(block);
  gFree(block);
}

}  // extern "C"

void* operator new(std::size_t size) { return TakeOrThrow(ZKT_CALLER, size); }
void* operator new[](std::size_t size) { return TakeOrThrow(ZKT_CALLER, size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return TakeOrNull(ZKT_CALLER, size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return TakeOrNull(ZKT_CALLER, size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

#undef ZKT_CALLER
