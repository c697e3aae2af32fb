// Builds host strings from bytes without the guard: host exceptions pass through.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Builds a host string from `count` bytes in `encoding` (an Encoding). The caller owns the result. Bytes in an 8-bit
// encoding that are all ASCII are marked as ASCII. UTF-16 is converted to UTF-8. Everything else keeps its encoding.
// Nil for null bytes, for a count below 1 or from 2^31 on, and if the host cannot build strings. The code that raises
// exceptions calls this function: with the guard, it would recurse forever on a host that cannot build strings.
REALstring BuildUnicodeString(const void* bytes, long long count, unsigned int encoding);

}  // namespace zkt
