#include "platform/backtrace_line.h"

#include <dlfcn.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace zkt {

void DescribeFrame(std::span<char> line, int index, const void* address) {
  Dl_info info{};
  ::dladdr(address, &info);
  const char* const path = info.dli_fname != nullptr ? info.dli_fname : "???";
  const char* const slash = std::strrchr(path, '/');
  const char* const image = slash != nullptr ? slash + 1 : path;
  const auto at = reinterpret_cast<std::uintptr_t>(address);
  const auto origin = reinterpret_cast<std::uintptr_t>(info.dli_saddr);
  if (info.dli_sname != nullptr)
    std::snprintf(line.data(), line.size(), "%-4d%-35s 0x%016zx %s + %zu", index, image, at, info.dli_sname,
                  at - origin);
  else
    std::snprintf(line.data(), line.size(), "%-4d%-35s 0x%016zx 0x%zx + %zu", index, image, at, origin, at - origin);
}

}  // namespace zkt
