// CountValueZKT for every supported element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Returns the number of elements equal to `value` among `sourceCount` elements starting at `sourceIndex`. A count of -2
// means all elements up to the end. Floating-point numbers are compared by the rules of IEEE 754, and strings by the
// host. Ranges and exceptions are the same as for SumArrayZKT.
// clang-format off
std::int64_t CountValueZKT_Boolean (_REALarrayBoolean* source, REALboolean value, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t CountValueZKT_Currency(_REALarrayCurrency* source, REALcurrency value, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t CountValueZKT_Int32   (_REALarrayInt32* source, std::int32_t value, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t CountValueZKT_Int64   (_REALarrayInt64* source, std::int64_t value, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t CountValueZKT_UInt32  (_REALarrayUInt32* source, std::uint32_t value, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t CountValueZKT_UInt64  (_REALarrayUInt64* source, std::uint64_t value, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t CountValueZKT_Double  (_REALarrayDouble* source, double value, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t CountValueZKT_Single  (_REALarraySingle* source, float value, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t CountValueZKT_Ptr     (_REALarrayPtr* source, void* value, std::int64_t sourceIndex, std::int64_t sourceCount);
std::int64_t CountValueZKT_String  (_REALarrayString* source, REALstring value, std::int64_t sourceIndex, std::int64_t sourceCount);
// clang-format on

}  // namespace zkt
