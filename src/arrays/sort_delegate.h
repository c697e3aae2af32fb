// SortArrayZKT with a user-defined comparison, for every supported element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Sorts the whole array with a delegate as the comparison. The delegate returns a negative number if its first argument
// goes before its second, and 0 if they are equal. `descending` reverses the sign. The sort is stable. The delegate
// receives elements of a copy, and the sort writes to the array once, at the end. It does not write if an exception
// escapes from the delegate, if a protected call ends a crashed delegate, or if the delegate itself changes the array.
// An inconsistent delegate leads to an arbitrary order, but no element is lost. The sort allocates 1.5 times the size
// of the elements. If the allocation fails, the sort works on the array itself and is not stable, and a crash can lose
// an element. Does nothing if the array is nil or has fewer than two elements. Raises "NilObjectException" if the
// delegate is nil or cannot be called, and "UnsupportedOperationException" if arrays cannot be accessed directly.
// Exceptions from the delegate propagate.
// clang-format off
void SortArrayZKT_BooleanDel (_REALarrayBoolean* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_ColorDel   (_REALarrayColor* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_CurrencyDel(_REALarrayCurrency* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_DoubleDel  (_REALarrayDouble* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_Int32Del   (_REALarrayInt32* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_Int64Del   (_REALarrayInt64* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_ObjectDel  (_REALarrayVariant* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_PtrDel     (_REALarrayPtr* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_SingleDel  (_REALarraySingle* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_StringDel  (_REALarrayString* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_UInt32Del  (_REALarrayUInt32* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_UInt64Del  (_REALarrayUInt64* theArray, REALobject theDelegate, REALboolean descending);
void SortArrayZKT_DateTimeDel(_REALarrayDateTime* theArray, REALobject theDelegate, REALboolean descending);
// clang-format on

}  // namespace zkt
