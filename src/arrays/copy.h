// CopyArrayZKT for every element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Overwrites elements of `dest` from `destIndex` on with `sourceCount` elements of `source` from `sourceIndex` on. A
// count of -2 means up to the end of the source. Overwritten strings and objects are released, and copied ones gain a
// reference. Ranges within one array may overlap. Does nothing for a nil source. Raises "NilObjectException" for a nil
// destination, "OutOfBoundsException" for a range outside its array, and "UnsupportedOperationException" without direct
// access to arrays. An exception leaves the destination unchanged.
// clang-format off
void CopyArrayZKT_Boolean (_REALarrayBoolean* source, _REALarrayBoolean* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Color   (_REALarrayColor* source, _REALarrayColor* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Currency(_REALarrayCurrency* source, _REALarrayCurrency* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Double  (_REALarrayDouble* source, _REALarrayDouble* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Int32   (_REALarrayInt32* source, _REALarrayInt32* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Int64   (_REALarrayInt64* source, _REALarrayInt64* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Ptr     (_REALarrayPtr* source, _REALarrayPtr* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Single  (_REALarraySingle* source, _REALarraySingle* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_String  (_REALarrayString* source, _REALarrayString* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_UInt32  (_REALarrayUInt32* source, _REALarrayUInt32* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_UInt64  (_REALarrayUInt64* source, _REALarrayUInt64* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Variant (_REALarrayVariant* source, _REALarrayVariant* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Object  (_REALarrayObject* source, _REALarrayObject* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_Date    (_REALarrayDate* source, _REALarrayDate* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
void CopyArrayZKT_DateTime(_REALarrayDateTime* source, _REALarrayDateTime* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);
// clang-format on

}  // namespace zkt
