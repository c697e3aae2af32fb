// How a thread that exits or is cancelled leaves its active functions.
#pragma once

#include <cxxabi.h>

namespace zkt {

// The C library unwinds such a thread as if by an exception, and ends the process if a handler swallows it: a catch-all
// handler must rethrow it. There is no object behind the reference, which GCC's sanitizer would report, so functions
// that catch this are marked no_sanitize("null").
#if defined(__GLIBCXX__)
using ThreadEnd = abi::__forced_unwind;
#else
class ThreadEnd {};  // no unwinding that can be caught, or none by that name
#endif

}  // namespace zkt
