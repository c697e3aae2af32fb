// How a thread that ends itself leaves the functions that it is in.
#pragma once

#include <cxxabi.h>

namespace zkt {

// The C library unwinds such a thread as if by an exception, and ends the process when a handler keeps that: who
// catches everything has to pass this on. There is no object behind the reference, which GCC's sanitizer would object
// to: functions that catch this are marked no_sanitize("null").
#if defined(__GLIBCXX__)
using ThreadEnd = abi::__forced_unwind;
#else
class ThreadEnd {};  // no unwinding that could be caught, or none by that name
#endif

}  // namespace zkt
