#include "arrays/add.h"

#include "arrays/array_access.h"
#include "arrays/prepared_range.h"
#include "frame/contract/host_services.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"

namespace zkt {

namespace {

// Converts an element to the argument type of the host's procedure. Booleans become 0 or 1.
template <class Array, class Argument>
Argument AsArgument(ElementOf<Array> element) {
  if constexpr (std::is_same_v<Array, _REALarrayBoolean>)
    return element != 0 ? 1 : 0;
  else if constexpr (kIsReference<Argument>)
    return reinterpret_cast<Argument>(element);
  else
    return static_cast<Argument>(element);
}

// Appends elements with the host's insert procedure, which may be declared for a different array type. For example,
// dates are inserted as objects.
template <auto& insert>
struct Adding;

template <class ProcedureArray, class Argument, ArrayProcedure<void(std::int64_t, Argument), ProcedureArray>& insert>
struct Adding<insert> {
  template <class Array>
  static void Run(Array* array1, Array* array2) {
    Trace("AddArrayZKT");
    if (array2 == nullptr) return;
    if (array1 == nullptr) {
      Trace("dest", "is nil");
      RaiseException("NilObjectException", "dest array is nil");
      return;
    }
    const std::int64_t upperBound = REALGetArrayUBound(array2);
    const auto* elements = GetArrayBasePointer(array2);
    if (elements == nullptr) return RaiseNoAccess();
    for (std::int64_t i = 0; i <= upperBound; ++i) {
      // If array1 and array2 are the same array, growing the array may move its elements.
      if (array1 == array2) elements = GetArrayBasePointer(array2);
      insert(reinterpret_cast<ProcedureArray*>(array1), REALGetArrayUBound(array1) + 1,
             AsArgument<Array, Argument>(elements[i]));
    }
  }
};

template <auto& insert, class Array>
void Add(Array* array1, Array* array2) {
  Adding<insert>::Run(array1, array2);
}

}  // namespace

// clang-format off
void AddArrayZKT_Boolean (_REALarrayBoolean* array1, _REALarrayBoolean* array2) { Add<REALInsertArrayValueBoolean>(array1, array2); }
void AddArrayZKT_Color   (_REALarrayColor* array1, _REALarrayColor* array2) { Add<REALInsertArrayValueColor>(array1, array2); }
void AddArrayZKT_Currency(_REALarrayCurrency* array1, _REALarrayCurrency* array2) { Add<REALInsertArrayValueCurrency>(array1, array2); }
void AddArrayZKT_Double  (_REALarrayDouble* array1, _REALarrayDouble* array2) { Add<REALInsertArrayValueDouble>(array1, array2); }
void AddArrayZKT_Int32   (_REALarrayInt32* array1, _REALarrayInt32* array2) { Add<REALInsertArrayValueInt32>(array1, array2); }
void AddArrayZKT_Int64   (_REALarrayInt64* array1, _REALarrayInt64* array2) { Add<REALInsertArrayValueInt64>(array1, array2); }
void AddArrayZKT_Ptr     (_REALarrayPtr* array1, _REALarrayPtr* array2) { Add<REALInsertArrayValuePtr>(array1, array2); }
void AddArrayZKT_Single  (_REALarraySingle* array1, _REALarraySingle* array2) { Add<REALInsertArrayValueSingle>(array1, array2); }
void AddArrayZKT_String  (_REALarrayString* array1, _REALarrayString* array2) { Add<REALInsertArrayValueString>(array1, array2); }
void AddArrayZKT_UInt32  (_REALarrayUInt32* array1, _REALarrayUInt32* array2) { Add<REALInsertArrayValueUInt32>(array1, array2); }
void AddArrayZKT_UInt64  (_REALarrayUInt64* array1, _REALarrayUInt64* array2) { Add<REALInsertArrayValueUInt64>(array1, array2); }
void AddArrayZKT_Object  (_REALarrayObject* array1, _REALarrayObject* array2) { Add<REALInsertArrayValueObject>(array1, array2); }
void AddArrayZKT_Date    (_REALarrayDate* array1, _REALarrayDate* array2) { Add<REALInsertArrayValueObject>(array1, array2); }
void AddArrayZKT_Variant (_REALarrayVariant* array1, _REALarrayVariant* array2) { Add<REALInsertArrayValueObject>(array1, array2); }
void AddArrayZKT_DateTime(_REALarrayDateTime* array1, _REALarrayDateTime* array2) { Add<REALInsertArrayValueObject>(array1, array2); }
// clang-format on

}  // namespace zkt
