// Adapts a declaration's flags to the host version.
#pragma once

#include <cstdint>

#include "frame/catalogue/flags.h"
#include "frame/contract/plugin_state.h"

namespace zkt {

// Hosts before 2020 release 2 do not know the combined target bits for desktop, web and console, so these bits are
// replaced with "console-safe". The kConsoleSafeFrom2010r3 marker is replaced with "console-safe" on hosts of 2010
// release 3 or later, and removed on older hosts.
inline std::uint32_t FixedFlags(std::uint32_t flags) {
  if (rbversion < 2020.02 && (flags & kTargetMask) == kDesktopWebConsole)
    flags = (flags & ~kTargetAndConsoleMask) | kConsoleSafe;
  if ((flags & kConsoleSafeFrom2010r3) != 0) {
    flags &= ~kConsoleSafeFrom2010r3;
    if (rbversion >= 2010.029) flags |= kConsoleSafe;
  }
  return flags;
}

}  // namespace zkt
