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
  const auto symbol = reinterpret_cast<std::uintptr_t>(info.dli_saddr);
  const auto base = reinterpret_cast<std::uintptr_t>(info.dli_fbase);
  const auto write = [&](const char* name, std::uintptr_t origin) {
    std::snprintf(line.data(), line.size(), "%-4d%-35s 0x%016zx %s + %zu", index, image, at, name, at - origin);
  };
  if (info.dli_sname != nullptr)
    write(info.dli_sname, symbol);
  else if (info.dli_fname != nullptr)
    write(image, base);
  else
    write("0x0", 0);
}

}  // namespace zkt
