// ReverseZKT for every element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Reverses the order of the elements in place. Reference counts do not change. Does nothing if the array is nil or has
// fewer than two elements. Raises "UnsupportedOperationException" if arrays cannot be accessed directly.
// clang-format off
void ReverseZKT_Boolean (_REALarrayBoolean* theArray);
void ReverseZKT_Color   (_REALarrayColor* theArray);
void ReverseZKT_Currency(_REALarrayCurrency* theArray);
void ReverseZKT_Date    (_REALarrayDate* theArray);
void ReverseZKT_DateTime(_REALarrayDateTime* theArray);
void ReverseZKT_Double  (_REALarrayDouble* theArray);
void ReverseZKT_Int32   (_REALarrayInt32* theArray);
void ReverseZKT_Int64   (_REALarrayInt64* theArray);
void ReverseZKT_Ptr     (_REALarrayPtr* theArray);
void ReverseZKT_Single  (_REALarraySingle* theArray);
void ReverseZKT_String  (_REALarrayString* theArray);
void ReverseZKT_UInt32  (_REALarrayUInt32* theArray);
void ReverseZKT_UInt64  (_REALarrayUInt64* theArray);
void ReverseZKT_Variant (_REALarrayVariant* theArray);
void ReverseZKT_Object  (_REALarrayObject* theArray);
// clang-format on

}  // namespace zkt
