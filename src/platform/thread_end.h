// The exception type that unwinds a thread that exits or is canceled.
#pragma once

#include <cxxabi.h>

namespace zkt {

// The C library unwinds such a thread as if by an exception and ends the process if a handler swallows the exception,
// so a catch-all handler must rethrow it. The caught reference does not refer to an object. GCC's sanitizer would
// report this, so functions that catch this type are marked no_sanitize("null").
#if defined(__GLIBCXX__)
using ThreadEnd = abi::__forced_unwind;
#else
class ThreadEnd {};  // never thrown, because this platform has no such exception or no name for it
#endif

}  // namespace zkt
