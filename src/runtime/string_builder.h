// Making host strings from bytes, without the guard: exceptions of the host pass.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Builds a host string from `count` bytes in `encoding` (an Encoding). The caller owns the result.
// Bytes of an 8-bit encoding that turn out to be ASCII are marked as ASCII; UTF-16 is converted to UTF-8; everything
// else keeps its encoding. Nil for null bytes, for a count below 1 or from 2^31 on, and when the host cannot build.
// Raising exceptions uses this one: with the guard it would never end on a host that fails to build strings.
REALstring BuildUnicodeString(const void* bytes, long long count, unsigned int encoding);

}  // namespace zkt
