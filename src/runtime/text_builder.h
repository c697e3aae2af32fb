// Builds host strings from bytes, for native functions. The names are fixed by the host's interface.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// BuildUnicodeString inside the guard: a host exception is raised as a Xojo exception, and the result is nil.
REALstring REALBuildUnicodeString(const void* bytes, long long count, unsigned int encoding);

// Builds a host string from zero-terminated text of unknown encoding: ASCII, else UTF-8 if it is well formed, else Mac
// Roman. The caller owns the result. Nil for null and empty text.
REALstring CString2RB_detect_encoding(const char* text);

}  // namespace zkt
