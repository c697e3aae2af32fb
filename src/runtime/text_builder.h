// Making host strings from bytes, for native functions.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// BuildUnicodeString inside the guard: an exception of the host is raised as the Xojo exception, and the result is nil.
REALstring REALBuildUnicodeString(const void* bytes, long long count, unsigned int encoding);

// Builds a host string from zero-terminated text of unknown encoding: ASCII, else UTF-8 when it is well formed, else
// Mac Roman. The caller owns the result; nil for null and empty text.
REALstring CString2RB_detect_encoding(const char* text);

}  // namespace zkt
