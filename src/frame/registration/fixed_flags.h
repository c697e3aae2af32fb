// Adapts the flags of a declaration to the version of the host.
#pragma once

#include <cstdint>

#include "frame/catalogue/flags.h"
#include "frame/contract/plugin_state.h"

namespace zkt {

// Hosts before 2020.02 do not know the combined target bits of desktop, web and console: they get "console-safe"
// instead. The marker for "console-safe from 2010 release 3 on" is replaced on every host.
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
