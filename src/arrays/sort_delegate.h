// SortArrayZKT with a user-defined comparison for every element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Sorts the whole array by a delegate. A negative result means that its first argument goes before the second, 0 that
// they are equal. `descending` reverses the sign. The sort is stable. The delegate receives elements of a copy, and the
// array changes once, at the end. It does not change if an exception unwinds out of the delegate, if a protected call
// ends the delegate, or if the delegate itself changes the array. An inconsistent delegate leaves the elements in an
// arbitrary order, but loses none. Needs 1.5 times the memory of the elements. Without that memory, the array itself is
// sorted, the sort is not stable, and a crash can lose an element. Does nothing for a nil array or fewer than two
// elements. Raises "NilObjectException" for a nil delegate or one that cannot be called, and
// "UnsupportedOperationException" without direct access to arrays. Exceptions of the delegate pass through.
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
