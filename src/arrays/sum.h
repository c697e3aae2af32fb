// SumArrayZKT, a function for each element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Add up `sourceCount` elements from `sourceIndex` on; a count of -2 means to the end. Of Booleans the true ones count.
// Integers wrap modulo 2^64, whatever `checkOverflow` says: callers rely on it. Real numbers are added strictly in
// order. A nil array, a count of 0 and an empty array to its end give 0. Raise "OutOfBoundsException" for a range that
// the array does not have, "UnsupportedOperationException" without direct access to arrays, and give 0 then.
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
