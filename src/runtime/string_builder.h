// Builds host strings from bytes. C++ exceptions from the host pass through.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Builds a host string from `count` bytes in `encoding` (an Encoding). The caller owns the result. A string in a
// single-byte encoding, or without an encoding, is marked as ASCII if all its bytes are ASCII. UTF-16 is converted to
// UTF-8. All other strings keep their encoding. Returns nil if `bytes` is null, if `count` is less than 1 or at least
// 2^31, or if the host cannot build strings. RaiseException calls this function. If this function used
// TranslateExceptions, the two would call each other forever on a host where building a string throws.
REALstring BuildUnicodeString(const void* bytes, long long count, unsigned int encoding);

}  // namespace zkt
