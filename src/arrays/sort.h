// SortArrayZKT in natural order, for every supported element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Sorts the whole array in place. The sort is not stable. `descending` reverses the comparison. Booleans are sorted as
// signed bytes, strings by the host's comparison, and dates by their total seconds. NaNs come last in either direction,
// in no particular order. Reference counts do not change. Does nothing if the array is nil or has fewer than two
// elements. Raises "UnsupportedOperationException" if arrays cannot be accessed directly.
// clang-format off
void SortArrayZKT_Boolean (_REALarrayBoolean* theArray, REALboolean descending);
void SortArrayZKT_Color   (_REALarrayColor* theArray, REALboolean descending);
void SortArrayZKT_Currency(_REALarrayCurrency* theArray, REALboolean descending);
void SortArrayZKT_Date    (_REALarrayDate* theArray, REALboolean descending);
void SortArrayZKT_DateTime(_REALarrayDateTime* theArray, REALboolean descending);
void SortArrayZKT_Double  (_REALarrayDouble* theArray, REALboolean descending);
void SortArrayZKT_Int32   (_REALarrayInt32* theArray, REALboolean descending);
void SortArrayZKT_Int64   (_REALarrayInt64* theArray, REALboolean descending);
void SortArrayZKT_Ptr     (_REALarrayPtr* theArray, REALboolean descending);
void SortArrayZKT_Single  (_REALarraySingle* theArray, REALboolean descending);
void SortArrayZKT_String  (_REALarrayString* theArray, REALboolean descending);
void SortArrayZKT_UInt32  (_REALarrayUInt32* theArray, REALboolean descending);
void SortArrayZKT_UInt64  (_REALarrayUInt64* theArray, REALboolean descending);
// clang-format on

}  // namespace zkt
