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

std::int64_t GetUpperBound(const Array* array) { return UpperBound(array); }

bool HasIndex(const Array* array, std::int64_t index) { return index >= 0 && index <= UpperBound(array); }

template <TypeKind... kKinds>
bool HoldsOneOf(const Array* array) {
  return array != nullptr && ((array->elementType.kind == kKinds) || ...);
}

// Inserts a value. The array retains strings and objects.
template <class Element>
void Insert(Array* array, std::int64_t index, Element value) {
  void* const place = InsertElement(array, index);
  if (place == nullptr) return;
  if constexpr (std::is_convertible_v<Element, RefCounted*>) Retain(value);
  *static_cast<Element*>(place) = value;
}

// Returns the function that inserts elements; null if the array has a different element type, because the function
// would corrupt such an array.
template <class Element, TypeKind... kKinds>
auto Inserter(const Array* array) -> void (*)(Array*, std::int64_t, Element) {
  return HoldsOneOf<kKinds...>(array) ? &Insert<Element> : nullptr;
}

std::int64_t ReadInteger(const Array* array, std::int64_t index) {
  return HasIndex(array, index) ? ElementAt<std::int64_t>(array, index) : 0;
}

void WriteInteger(Array* array, std::int64_t value, std::int64_t index) {
  if (HasIndex(array, index)) ElementAt<std::int64_t>(array, index) = value;
}

auto IntegerReader(const Array* array) {
  return HoldsOneOf<TypeKind::kInt64, TypeKind::kPtr>(array) ? &ReadInteger : nullptr;
}
auto IntegerWriter(const Array* array) {
  return HoldsOneOf<TypeKind::kInt64, TypeKind::kPtr>(array) ? &WriteInteger : nullptr;
}

REALstringStruct* ReadString(const Array* array, std::int64_t index) {
  if (!HoldsOneOf<TypeKind::kString>(array) || !HasIndex(array, index)) return nullptr;
  auto* const string = ElementAt<REALstringStruct*>(array, index);
  Retain(string);
  return string;
}

}  // namespace

std::span<const Service> ArrayServices() {
  // clang-format off
  static const Service services[] = {
      MakeService<CreateArray>("RuntimeArrayCreateSingleDimBoundedArray"),
      MakeService<GetUpperBound>("RuntimeUBound"),
      MakeService<ReadString>("RuntimeDirectReadStringArray"),
      MakeService<IntegerReader>("PluginIntegerArrayGetProc"),
      MakeService<IntegerWriter>("PluginIntegerArraySetProc"),
      MakeService<Inserter<std::uint8_t,      TypeKind::kBoolean>>("PluginBooleanArrayInsertProc"),
      MakeService<Inserter<std::uint32_t,     TypeKind::kColor>>("PluginColorArrayInsertProc"),
      MakeService<Inserter<std::int64_t,      TypeKind::kCurrency>>("PluginCurrencyArrayInsertProc"),
      MakeService<Inserter<double,            TypeKind::kDouble>>("PluginDoubleArrayInsertProc"),
      MakeService<Inserter<float,             TypeKind::kSingle>>("PluginSingleArrayInsertProc"),
      MakeService<Inserter<std::int32_t,      TypeKind::kInt32>>("PluginInt32ArrayInsertProc"),
      MakeService<Inserter<std::int64_t,      TypeKind::kInt64>>("PluginInt64ArrayInsertProc"),
      MakeService<Inserter<std::uint32_t,     TypeKind::kUInt32>>("PluginUInt32ArrayInsertProc"),
      MakeService<Inserter<std::uint64_t,     TypeKind::kUInt64>>("PluginUInt64ArrayInsertProc"),
      MakeService<Inserter<std::int64_t,      TypeKind::kInt64, TypeKind::kPtr>>("PluginIntegerArrayInsertProc"),
      MakeService<Inserter<REALstringStruct*, TypeKind::kString>>("PluginStringArrayInsertProc"),
      MakeService<Inserter<REALobjectStruct*, TypeKind::kObject, TypeKind::kVariant>>("PluginObjectArrayInsertProc"),
  };
  // clang-format on
  return services;
}

}  // namespace host
