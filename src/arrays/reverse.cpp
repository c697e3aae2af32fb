#include "arrays/reverse.h"

#include "arrays/array_access.h"
#include "arrays/kernels.h"
#include "arrays/prepared_range.h"
#include "arrays/range.h"
#include "arrays/raw_elements.h"
#include "frame/contract/host_services.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

template <class Array>
void Reverse(Array* theArray) {
  if (theArray == nullptr) return;
  const auto getUpperBound = REALGetArrayUBound.Get();
  if (getUpperBound == nullptr) return;
  const std::int64_t upperBound = getUpperBound(theArray);
  if (upperBound < 1) return;
  auto* const elements = GetArrayBasePointer(theArray);
  if (elements == nullptr) return RaiseNoAccess();
  Trace("h", CountToEnd(0, upperBound) / 2);
  kernels::Reverse(AsBits(elements), CountToEnd(0, upperBound));
}

}  // namespace

// clang-format off
void ReverseZKT_Boolean (_REALarrayBoolean* theArray) { Reverse(theArray); }
void ReverseZKT_Color   (_REALarrayColor* theArray) { Reverse(theArray); }
void ReverseZKT_Currency(_REALarrayCurrency* theArray) { Reverse(theArray); }
void ReverseZKT_Date    (_REALarrayDate* theArray) { Reverse(theArray); }
void ReverseZKT_DateTime(_REALarrayDateTime* theArray) { Reverse(theArray); }
void ReverseZKT_Double  (_REALarrayDouble* theArray) { Reverse(theArray); }
void ReverseZKT_Int32   (_REALarrayInt32* theArray) { Reverse(theArray); }
void ReverseZKT_Int64   (_REALarrayInt64* theArray) { Reverse(theArray); }
void ReverseZKT_Ptr     (_REALarrayPtr* theArray) { Reverse(theArray); }
void ReverseZKT_Single  (_REALarraySingle* theArray) { Reverse(theArray); }
void ReverseZKT_String  (_REALarrayString* theArray) { Reverse(theArray); }
void ReverseZKT_UInt32  (_REALarrayUInt32* theArray) { Reverse(theArray); }
void ReverseZKT_UInt64  (_REALarrayUInt64* theArray) { Reverse(theArray); }
void ReverseZKT_Variant (_REALarrayVariant* theArray) { Reverse(theArray); }
void ReverseZKT_Object  (_REALarrayObject* theArray) { Reverse(theArray); }
// clang-format on

}  // namespace zkt
