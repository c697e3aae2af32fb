// SumArrayZKT for every supported element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Returns the sum of `sourceCount` elements starting at `sourceIndex`. A count of -2 means all elements up to the end.
// Booleans are added as signed bytes, normally 0 or 1. Integer sums wrap modulo 2^64 regardless of `checkOverflow`, and
// callers rely on this. Floating-point numbers are added in order. Returns 0 if the array is nil, if the range is
// empty, or after an exception. Raises "OutOfBoundsException" if the range exceeds the array, and
// "UnsupportedOperationException" if arrays cannot be accessed directly.
// clang-format off
std::int64_t  SumArrayZKT_Boolean (_REALarrayBoolean* source, std::int64_t sourceIndex, std::int64_t sourceCount);
REALcurrency  SumArrayZKT_Currency(_REALarrayCurrency* source, std::int64_t sourceIndex, std::int64_t sourceCount, REALboolean checkOverflow);
std::int64_t  SumArrayZKT_Int32   (_REALarrayInt32* source, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t  SumArrayZKT_Int64   (_REALarrayInt64* source, std::int64_t sourceIndex, std::int64_t sourceCount, REALboolean checkOverflow);
std::uint64_t SumArrayZKT_UInt32  (_REALarrayUInt32* source, std::int64_t sourceIndex, std::int64_t sourceCount, REALboolean checkOverflow);
std::uint64_t SumArrayZKT_UInt64  (_REALarrayUInt64* source, std::int64_t sourceIndex, std::int64_t sourceCount, REALboolean checkOverflow);
double        SumArrayZKT_Double  (_REALarrayDouble* source, std::int64_t sourceIndex, std::int64_t sourceCount);
double        SumArrayZKT_Single  (_REALarraySingle* source, std::int64_t sourceIndex, std::int64_t sourceCount);
// clang-format on

}  // namespace zkt
