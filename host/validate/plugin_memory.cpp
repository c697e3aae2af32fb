// The program's own malloc, operator new and their opposites stand before those of all libraries. While nothing is
// watched they cost a branch.
#include "validate/plugin_memory.h"

#include <dlfcn.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <mutex>
#include <new>
#include <unordered_set>
#include <utility>

#include "validate/memory_asker.h"

namespace host::validate {

constinit Shortage gMemoryShortage;

namespace {

constinit std::atomic<bool> gIsWatching = false;

// What this file itself asks for is served at once.
constinit thread_local bool gIsInside = false;

class Inside {
 public:
  Inside() { gIsInside = true; }
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;
  ~Inside() { gIsInside = false; }
};

// Before the first one is taken nothing but this is looked at: when a process begins little else works.
constinit std::atomic<std::size_t> gTakenCount = 0;

// The blocks that the plug-in has taken and nobody has given back. Other libraries' threads take and give too.
class Blocks {
 public:
  void Add(void* block) {
    const std::lock_guard lock(*this);
    blocks_.insert(block);
    gTakenCount = blocks_.size();
  }
  void Remove(void* block) {
    const std::lock_guard lock(*this);
    blocks_.erase(block);
    gTakenCount = blocks_.size();
  }

  // What std::lock_guard calls. Mutexes of libraries can be watched, and take memory for it.
  void lock() {
    while (isLocked_.test_and_set(std::memory_order_acquire)) {
    }
  }
  void unlock() { isLocked_.clear(std::memory_order_release); }

 private:
  std::atomic_flag isLocked_;
  std::unordered_set<void*> blocks_;
};

// Never destroyed: memory is given back until the very end.
Blocks& TakenBlocks() {
  alignas(Blocks) static std::byte memory[sizeof(Blocks)];
  static Blocks* const blocks = new (memory) Blocks;
  return *blocks;
}

// Serves a request for memory by calling `request`; null if it fails, and if it is told to.
template <class Request>
void* Take(void* caller, const Request& request) {
  if (gIsInside || (!gIsWatching && !gMemoryShortage.IsOn())) return request();
  const Inside inside;
  if (!AsksForPlugin(caller)) return request();
  if (gMemoryShortage.Strikes()) {
    errno = ENOMEM;
    return nullptr;
  }
  void* const block = request();
  // The C library itself keeps some memory when it runs out of it.
  const bool isNoted = gIsWatching && (!gMemoryShortage.IsOn() || IsInPlugin(caller));
  if (isNoted && block != nullptr) TakenBlocks().Add(block);
  return block;
}

void GiveBack(void* block) {
  if (gTakenCount == 0 || gIsInside) return;
  const Inside inside;
  TakenBlocks().Remove(block);
}

// What would serve the request if this file did not.
template <class Function>
Function* Next(Function*& next, const char* name) {
  if (next == nullptr) next = reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
  return next;
}

using Malloc = void*(std::size_t);
using Calloc = void*(std::size_t, std::size_t);
using Realloc = void*(void*, std::size_t);
using Free = void(void*);

constinit Malloc* gMalloc = nullptr;
constinit Calloc* gCalloc = nullptr;
constinit Realloc* gRealloc = nullptr;
constinit Free* gFree = nullptr;

// What comes from one form of new must not go to the other form of delete. The names are those of the C++ ABI, for a
// size of one long.
struct NewForm {
  const char* newName;
  const char* deleteName;
  Malloc* nextNew = nullptr;
  Free* nextDelete = nullptr;
};
constinit NewForm gNew = {"_Znwm", "_ZdlPv"};
constinit NewForm gNewArray = {"_Znam", "_ZdaPv"};

void* NewOrThrow(NewForm& form, std::size_t size, void* caller) {
  void* const block = Take(caller, [&] { return Next(form.nextNew, form.newName)(size); });
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void* NewOrNull(NewForm& form, std::size_t size, void* caller) noexcept {
  try {
    return NewOrThrow(form, size, caller);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void Delete(NewForm& form, void* block) {
  GiveBack(block);
  Next(form.nextDelete, form.deleteName)(block);
}

}  // namespace

MemoryWatch::MemoryWatch() { gIsWatching = true; }

MemoryWatch::~MemoryWatch() { gIsWatching = false; }

std::size_t CountTakenBlocks() { return gTakenCount; }

}  // namespace host::validate

using namespace host::validate;

// Here so that the caller's address is that of whoever asked.
#define ZKT_CALLER __builtin_return_address(0)

extern "C" {

void* malloc(std::size_t size) noexcept {
  return Take(ZKT_CALLER, [=] { return Next(gMalloc, "malloc")(size); });
}

void* calloc(std::size_t count, std::size_t size) noexcept {
  return Take(ZKT_CALLER, [=] { return Next(gCalloc, "calloc")(count, size); });
}

void* realloc(void* block, std::size_t size) noexcept {
  void* const moved = Take(ZKT_CALLER, [=] { return Next(gRealloc, "realloc")(block, size); });
  if (moved != block && (moved != nullptr || size == 0)) GiveBack(block);
  return moved;
}

void free(void* block) noexcept {
  // Looking the next one up can free a text itself, which is lost.
  static constinit bool isLookingUp = false;
  if (gFree == nullptr && std::exchange(isLookingUp, true)) return;
  GiveBack(block);
  Next(gFree, "free")(block);
}

}  // extern "C"

void* operator new(std::size_t size) { return NewOrThrow(gNew, size, ZKT_CALLER); }
void* operator new[](std::size_t size) { return NewOrThrow(gNewArray, size, ZKT_CALLER); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return NewOrNull(gNew, size, ZKT_CALLER); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return NewOrNull(gNewArray, size, ZKT_CALLER);
}

void operator delete(void* block) noexcept { Delete(gNew, block); }
void operator delete[](void* block) noexcept { Delete(gNewArray, block); }
void operator delete(void* block, std::size_t) noexcept { Delete(gNew, block); }
void operator delete[](void* block, std::size_t) noexcept { Delete(gNewArray, block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Delete(gNew, block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { Delete(gNewArray, block); }

#undef ZKT_CALLER
