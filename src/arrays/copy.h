// CopyArrayZKT for every element type.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Copies `sourceCount` elements of `source`, starting at `sourceIndex`, over the elements of `dest` that start at
// `destIndex`. A count of -2 means all elements up to the end of the source. Overwritten strings and objects are
// released, and copied strings and objects gain a reference. Ranges within one array may overlap. Does nothing if the
// source is nil. Raises "NilObjectException" if the destination is nil, "OutOfBoundsException" if a range exceeds its
// array, and "UnsupportedOperationException" if arrays cannot be accessed directly. In these cases, the destination
// stays unchanged.
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
