#include "platform/backtrace_line.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdint>
#include <cstdio>

namespace zkt {

void DescribeFrame(std::span<char> line, int /*index*/, const void* address) {
  Dl_info info{};
  link_map* module = nullptr;
  const bool isFound = ::dladdr1(address, &info, reinterpret_cast<void**>(&module), RTLD_DL_LINKMAP) != 0;
  if (!isFound || info.dli_fname == nullptr || *info.dli_fname == '\0') {
    std::snprintf(line.data(), line.size(), "[%p]", address);
    return;
  }
  // Without a symbol, the offset is relative to the module.
  const auto origin = info.dli_sname != nullptr ? reinterpret_cast<std::uintptr_t>(info.dli_saddr) : module->l_addr;
  if (origin == 0) {
    std::snprintf(line.data(), line.size(), "%s() [%p]", info.dli_fname, address);
    return;
  }
  std::snprintf(line.data(), line.size(), "%s(%s+%#zx) [%p]", info.dli_fname,
                info.dli_sname != nullptr ? info.dli_sname : "", reinterpret_cast<std::uintptr_t>(address) - origin,
                address);
}

}  // namespace zkt
