// CoreFoundation strings: the system's on macOS, the subset that is used here on Linux.
#pragma once

#if defined(__APPLE__)
#include <CoreFoundation/CoreFoundation.h>
#else
#include "platform/linux/core_foundation.h"
#endif

namespace zkt {

// Whether the host can hand out its strings as CoreFoundation strings. Only macOS hosts have real ones.
#if defined(__APPLE__)
inline constexpr bool kHostHasCFStrings = true;
#else
inline constexpr bool kHostHasCFStrings = false;
#endif

}  // namespace zkt
