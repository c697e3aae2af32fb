// Making host strings from bytes.
#pragma once

#include <cstdint>

#include "frame/plugin_interface.h"

namespace zkt {

// Builds a host string from `count` bytes in `encoding` (an Encoding). The caller owns the result.
// Bytes of an 8-bit encoding that turn out to be ASCII are marked as ASCII; UTF-16 is converted to UTF-8; everything
// else keeps its encoding. Nil for null bytes, for a count below 1 or from 2^31 on, and when the host cannot build.
// An exception of the host is raised as the Xojo exception.
REALstring REALBuildUnicodeString(const void* bytes, long long count, unsigned int encoding);

// The same, but exceptions of the host pass. For raising exceptions, which would otherwise never end on a host that
// fails to build strings.
REALstring BuildUnicodeString(const void* bytes, long long count, unsigned int encoding);

// Builds a host string from zero-terminated text of unknown encoding: ASCII, else UTF-8 when it is well formed, else
// Mac Roman. The caller owns the result; nil for null and empty text.
REALstring CString2RB_detect_encoding(const char* text);

}  // namespace zkt
