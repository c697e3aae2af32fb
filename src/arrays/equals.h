// EqualsArrayZKT, a function for each element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Whether `count` elements of array1 from `array1offset` on equal those of array2 from `array2offset` on; a count of -2
// means to the end of array1. Real numbers are compared by the rules of IEEE 754, strings by identity or else by the
// host. False where there is nothing to compare. Raise "NilObjectException" for a nil array, "OutOfBoundsException" for
// ranges that the arrays do not have, "UnsupportedOperationException" without direct access to arrays.
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
