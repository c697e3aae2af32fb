#include "validate/memory_asker.h"

#include <link.h>
#include <unwind.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace host::validate {

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

}  // namespace

bool AsksForPlugin(void* caller) {
  const auto address = reinterpret_cast<std::uintptr_t>(caller);
  const Asker asker = AskerAt(address);
  if (asker != Asker::kLibrary) return asker == Asker::kPlugin;
  Walk walk{address};
  _Unwind_Backtrace(&VisitFrame, &walk);
  return walk.asker == Asker::kPlugin;
}

bool IsInPlugin(void* caller) { return gPlugin.Hold(reinterpret_cast<std::uintptr_t>(caller)); }

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
