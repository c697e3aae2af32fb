// CoreFoundation strings: the system framework on macOS, our own subset on Linux.
#pragma once

#if __has_include(<CoreFoundation/CoreFoundation.h>)
#include <CoreFoundation/CoreFoundation.h>
#else
#include "platform/linux/core_foundation.h"
#endif

namespace zkt {

// Whether the host can provide its strings as CoreFoundation strings. Only macOS hosts can.
#if __has_include(<CoreFoundation/CoreFoundation.h>)
inline constexpr bool kHostHasCFStrings = true;
#else
inline constexpr bool kHostHasCFStrings = false;
#endif

}  // namespace zkt
