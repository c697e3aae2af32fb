// EqualsArrayZKT for every supported element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Returns whether `count` elements of array1, starting at `array1offset`, equal the elements of array2 that start at
// `array2offset`. A count of -2 means all elements up to the end of array1. Floating-point numbers are compared by the
// rules of IEEE 754. Strings are equal if they are the same host string or the host considers them equal. Returns false
// if there is nothing to compare. Raises "NilObjectException" if an array is nil, "OutOfBoundsException" if a range
// exceeds its array, and "UnsupportedOperationException" if arrays cannot be accessed directly.
// clang-format off
REALboolean EqualsArrayZKT_Boolean (_REALarrayBoolean* array1, _REALarrayBoolean* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_Color   (_REALarrayColor* array1, _REALarrayColor* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_Currency(_REALarrayCurrency* array1, _REALarrayCurrency* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_Double  (_REALarrayDouble* array1, _REALarrayDouble* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_Int32   (_REALarrayInt32* array1, _REALarrayInt32* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_Int64   (_REALarrayInt64* array1, _REALarrayInt64* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_Ptr     (_REALarrayPtr* array1, _REALarrayPtr* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_Single  (_REALarraySingle* array1, _REALarraySingle* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_String  (_REALarrayString* array1, _REALarrayString* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_UInt32  (_REALarrayUInt32* array1, _REALarrayUInt32* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
REALboolean EqualsArrayZKT_UInt64  (_REALarrayUInt64* array1, _REALarrayUInt64* array2, std::int64_t array1offset, std::int64_t count, std::int64_t array2offset);
// clang-format on

}  // namespace zkt
