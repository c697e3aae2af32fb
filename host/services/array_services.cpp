// Array services: creation, upper bound, and reading, writing and inserting elements.
#include <type_traits>

#include "core/arrays.h"
#include "core/host.h"
#include "core/objects.h"
#include "core/strings.h"
#include "frame/contract/plugin_interface.h"
#include "services/services.h"

namespace host {

namespace {

Array* CreateArray(std::int64_t elementType, std::int64_t upperBound) {
  if (Host::Current().creationFailures.ShouldFail()) return nullptr;
  if (elementType == zkt::kArrayOfString) return MakeArray(kStringType, upperBound);
  if (elementType == zkt::kArrayOfInteger) return MakeArray(kIntegerType, upperBound);
  return nullptr;
}

bool HasIndex(const Array* array, std::int64_t index) { return index >= 0 && index <= UpperBound(array); }

// Inserts a value. The array retains strings and objects.
template <class Element>
void Insert(Array* array, std::int64_t index, Element value) {
  void* const place = InsertElement(array, index);
  if (place == nullptr) return;
  if constexpr (std::is_convertible_v<Element, RefCounted*>) Retain(value);
  *static_cast<Element*>(place) = value;
}

std::int64_t ReadInteger(const Array* array, std::int64_t index) {
  return HasIndex(array, index) ? ElementAt<std::int64_t>(array, index) : 0;
}

void WriteInteger(Array* array, std::int64_t value, std::int64_t index) {
  if (HasIndex(array, index)) ElementAt<std::int64_t>(array, index) = value;
}

// Returns the procedure; null if the array has a different element type, because the procedure would corrupt such an
// array.
template <auto* kProcedure, TypeKind... kKinds>
auto ProcedureFor(const Array* array) {
  const bool isSuitable = array != nullptr && ((array->elementType.kind == kKinds) || ...);
  return isSuitable ? kProcedure : nullptr;
}

REALstringStruct* ReadString(const Array* array, std::int64_t index) {
  if (array == nullptr || array->elementType.kind != TypeKind::kString || !HasIndex(array, index)) return nullptr;
  auto* const string = ElementAt<REALstringStruct*>(array, index);
  Retain(string);
  return string;
}

}  // namespace

std::vector<Service> ArrayServices() {
  using enum TypeKind;
  // clang-format off
  return {
      MakeService<CreateArray>("RuntimeArrayCreateSingleDimBoundedArray"),
      MakeService<UpperBound>("RuntimeUBound"),
      MakeService<ReadString>("RuntimeDirectReadStringArray"),
      MakeService<ProcedureFor<ReadInteger, kInt64, kPtr>>("PluginIntegerArrayGetProc"),
      MakeService<ProcedureFor<WriteInteger, kInt64, kPtr>>("PluginIntegerArraySetProc"),
      MakeService<ProcedureFor<Insert<std::uint8_t>,      kBoolean>>("PluginBooleanArrayInsertProc"),
      MakeService<ProcedureFor<Insert<std::uint32_t>,     kColor>>("PluginColorArrayInsertProc"),
      MakeService<ProcedureFor<Insert<std::int64_t>,      kCurrency>>("PluginCurrencyArrayInsertProc"),
      MakeService<ProcedureFor<Insert<double>,            kDouble>>("PluginDoubleArrayInsertProc"),
      MakeService<ProcedureFor<Insert<float>,             kSingle>>("PluginSingleArrayInsertProc"),
      MakeService<ProcedureFor<Insert<std::int32_t>,      kInt32>>("PluginInt32ArrayInsertProc"),
      MakeService<ProcedureFor<Insert<std::int64_t>,      kInt64>>("PluginInt64ArrayInsertProc"),
      MakeService<ProcedureFor<Insert<std::uint32_t>,     kUInt32>>("PluginUInt32ArrayInsertProc"),
      MakeService<ProcedureFor<Insert<std::uint64_t>,     kUInt64>>("PluginUInt64ArrayInsertProc"),
      MakeService<ProcedureFor<Insert<std::int64_t>,      kInt64, kPtr>>("PluginIntegerArrayInsertProc"),
      MakeService<ProcedureFor<Insert<REALstringStruct*>, kString>>("PluginStringArrayInsertProc"),
      MakeService<ProcedureFor<Insert<REALobjectStruct*>, kObject, kVariant>>("PluginObjectArrayInsertProc"),
  };
  // clang-format on
}

}  // namespace host
