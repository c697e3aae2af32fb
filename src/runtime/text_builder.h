// Builds host strings from bytes for native functions. The names are fixed by the host's interface.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Calls BuildUnicodeString. Converts a C++ exception to a Xojo exception and returns nil.
REALstring REALBuildUnicodeString(const void* bytes, long long count, unsigned int encoding);

// Builds a host string from zero-terminated bytes in an unknown encoding: ASCII if possible, else UTF-8 if the bytes
// are printable UTF-8, else Mac Roman. The caller owns the result. Returns nil if `text` is null or empty.
REALstring CString2RB_detect_encoding(const char* text);

}  // namespace zkt
