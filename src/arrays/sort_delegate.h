// SortArrayZKT with a comparison that the caller writes, a function for each element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Sort the whole array by a delegate: negative means that its first argument goes before the second, 0 that they are
// equal; `descending` reverses the sign. Stable: equal elements stay in their order. The delegate gets the elements of
// a copy, and the array changes once, at the end: it stays as it is when an exception unwinds out of the delegate, when
// a protected call ends it, and when the delegate itself changes the array. A delegate that contradicts itself leaves
// the elements in some order, and none is lost. Takes one and a half times the memory of the elements; without it the
// array itself is sorted, not stable, and a crash can lose an element. A nil array and one of less than two
// elements are left alone. Raise "NilObjectException" for a nil delegate and one that cannot be called,
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
