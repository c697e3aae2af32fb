// The program's own malloc and operator new stand before those of all libraries. While nothing is to fail they cost a
// branch.
#include "validate/failing_memory.h"

#include <dlfcn.h>
#include <link.h>
#include <unwind.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <string_view>

namespace host::validate {

constinit Shortage gMemoryShortage;

namespace {

struct AddressRange {
  std::uintptr_t begin;
  std::uintptr_t end;

  bool Holds(std::uintptr_t address) const { return address >= begin && address < end; }
};

// No memory is taken here: this serves those who give it.
struct Ranges {
  std::array<AddressRange, 32> items{};
  std::size_t count = 0;

  void Add(AddressRange range) {
    if (count < items.size()) items[count++] = range;
  }
  bool Hold(std::uintptr_t address) const {
    for (std::size_t i = 0; i < count; ++i)
      if (items[i].Holds(address)) return true;
    return false;
  }
};

Ranges gPlugin;
Ranges gLibraries;  // that take memory in the name of their caller

enum class Asker { kPlugin, kLibrary, kOther };

Asker AskerAt(std::uintptr_t address) {
  return gPlugin.Hold(address) ? Asker::kPlugin : gLibraries.Hold(address) ? Asker::kLibrary : Asker::kOther;
}

struct Walk {
  std::uintptr_t start;  // the frames before are our own
  bool hasStarted = false;
  Asker asker = Asker::kOther;
};

_Unwind_Reason_Code VisitFrame(_Unwind_Context* context, void* data) {
  Walk& walk = *static_cast<Walk*>(data);
  const std::uintptr_t address = _Unwind_GetIP(context);
  walk.hasStarted = walk.hasStarted || address == walk.start;
  if (!walk.hasStarted) return _URC_NO_REASON;
  walk.asker = AskerAt(address);
  return walk.asker == Asker::kLibrary ? _URC_NO_REASON : _URC_NORMAL_STOP;
}

bool AsksForPlugin(void* caller) {
  const auto address = reinterpret_cast<std::uintptr_t>(caller);
  const Asker asker = AskerAt(address);
  if (asker != Asker::kLibrary) return asker == Asker::kPlugin;
  Walk walk{address};
  _Unwind_Backtrace(&VisitFrame, &walk);
  return walk.asker == Asker::kPlugin;
}

bool Fails(void* caller) {
  static constinit bool isAsking = false;
  if (!gMemoryShortage.IsOn() || isAsking) return false;
  isAsking = true;
  const bool fails = AsksForPlugin(caller) && gMemoryShortage.Strikes();
  isAsking = false;
  return fails;
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

constinit Malloc* gMalloc = nullptr;
constinit Calloc* gCalloc = nullptr;
constinit Realloc* gRealloc = nullptr;

void* NoMemory() {
  errno = ENOMEM;
  return nullptr;
}

// What comes from one form of new must not go to the other form of delete. The names are those of the C++ ABI, for a
// size of one long.
struct NewForm {
  const char* name;
  Malloc* next = nullptr;
};
constinit NewForm gNew = {"_Znwm"};
constinit NewForm gNewArray = {"_Znam"};

void* NewOrThrow(NewForm& form, std::size_t size, void* caller) {
  if (Fails(caller)) throw std::bad_alloc();
  return Next(form.next, form.name)(size);
}

void* NewOrNull(NewForm& form, std::size_t size, void* caller) noexcept {
  try {
    return NewOrThrow(form, size, caller);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

void WatchMemoryOf(const std::string& library) {
  gPlugin = gLibraries = {};
  struct Search {
    std::string path;
  } search{library};
  const auto visit = [](dl_phdr_info* info, std::size_t, void* data) {
    const std::string_view path = info->dlpi_name;
    const std::string_view file = path.substr(path.rfind('/') + 1);
    const bool isPlugin = path == static_cast<const Search*>(data)->path;
    bool isLibrary = false;
    for (const char* const name :
         {"libc.so", "libm.so", "libstdc++.so", "libgcc_s.so", "ld-linux", "libasan.so", "libubsan.so"})
      isLibrary = isLibrary || file.starts_with(name);
    for (int i = 0; i < info->dlpi_phnum; ++i) {
      const auto& segment = info->dlpi_phdr[i];
      if (segment.p_type != PT_LOAD || (segment.p_flags & PF_X) == 0) continue;
      const std::uintptr_t begin = info->dlpi_addr + segment.p_vaddr;
      if (isPlugin || isLibrary) (isPlugin ? gPlugin : gLibraries).Add({begin, begin + segment.p_memsz});
    }
    return 0;
  };
  ::dl_iterate_phdr(visit, &search);
  if (gPlugin.count == 0) throw std::runtime_error(search.path + " is not loaded by this path");
}

}  // namespace host::validate

// Here so that the caller's address is that of whoever asked.
#define ZKT_CALLER __builtin_return_address(0)

extern "C" {

void* malloc(std::size_t size) noexcept {
  using namespace host::validate;
  return Fails(ZKT_CALLER) ? NoMemory() : Next(gMalloc, "malloc")(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
  using namespace host::validate;
  return Fails(ZKT_CALLER) ? NoMemory() : Next(gCalloc, "calloc")(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept {
  using namespace host::validate;
  return Fails(ZKT_CALLER) ? NoMemory() : Next(gRealloc, "realloc")(memory, size);
}

}  // extern "C"

void* operator new(std::size_t size) { return host::validate::NewOrThrow(host::validate::gNew, size, ZKT_CALLER); }
void* operator new[](std::size_t size) {
  return host::validate::NewOrThrow(host::validate::gNewArray, size, ZKT_CALLER);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return host::validate::NewOrNull(host::validate::gNew, size, ZKT_CALLER);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return host::validate::NewOrNull(host::validate::gNewArray, size, ZKT_CALLER);
}

#undef ZKT_CALLER
