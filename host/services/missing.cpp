#include "services/missing.h"

#include <algorithm>

namespace host {

namespace {

// The addresses that trapped requests return. Ordinary processes cannot map memory at these low addresses, so a call to
// one of them always crashes. The address identifies the request that returned it.
constexpr std::uintptr_t kTrapStep = 16;
constexpr std::uintptr_t kTrapEnd = 0x10000;

}  // namespace

void* Missing(const char* name) {
  const auto found = std::ranges::find(gMissing.names, name);
  const auto index = static_cast<std::uintptr_t>(found - gMissing.names.begin());
  if (found == gMissing.names.end()) gMissing.names.emplace_back(name);
  const std::uintptr_t address = kTrapStep * (index + 1);
  return reinterpret_cast<void*>(gMissing.areTrapped && address < kTrapEnd ? address : 0);
}

std::optional<const char*> FindMissingCall(std::uintptr_t address) {
  const std::uintptr_t index = address / kTrapStep - 1;
  if (address == 0) return nullptr;
  if (address % kTrapStep != 0 || index >= gMissing.names.size()) return std::nullopt;
  return gMissing.names[index].c_str();
}

}  // namespace host
