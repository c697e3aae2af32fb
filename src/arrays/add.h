// AddArrayZKT for every element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Appends all elements of array2 to array1. array1 gets its own references to strings and objects. Appending an array
// to itself doubles its length. Does nothing if array2 is nil. Raises "NilObjectException" if array1 is nil, and
// "UnsupportedOperationException" if arrays cannot be accessed directly.
// clang-format off
void AddArrayZKT_Boolean (_REALarrayBoolean* array1, _REALarrayBoolean* array2);
void AddArrayZKT_Color   (_REALarrayColor* array1, _REALarrayColor* array2);
void AddArrayZKT_Currency(_REALarrayCurrency* array1, _REALarrayCurrency* array2);
void AddArrayZKT_Double  (_REALarrayDouble* array1, _REALarrayDouble* array2);
void AddArrayZKT_Int32   (_REALarrayInt32* array1, _REALarrayInt32* array2);
void AddArrayZKT_Int64   (_REALarrayInt64* array1, _REALarrayInt64* array2);
void AddArrayZKT_Ptr     (_REALarrayPtr* array1, _REALarrayPtr* array2);
void AddArrayZKT_Single  (_REALarraySingle* array1, _REALarraySingle* array2);
void AddArrayZKT_String  (_REALarrayString* array1, _REALarrayString* array2);
void AddArrayZKT_UInt32  (_REALarrayUInt32* array1, _REALarrayUInt32* array2);
void AddArrayZKT_UInt64  (_REALarrayUInt64* array1, _REALarrayUInt64* array2);
void AddArrayZKT_Object  (_REALarrayObject* array1, _REALarrayObject* array2);
void AddArrayZKT_Date    (_REALarrayDate* array1, _REALarrayDate* array2);
void AddArrayZKT_Variant (_REALarrayVariant* array1, _REALarrayVariant* array2);
void AddArrayZKT_DateTime(_REALarrayDateTime* array1, _REALarrayDateTime* array2);
// clang-format on

}  // namespace zkt
