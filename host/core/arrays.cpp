#include "core/arrays.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "core/host.h"

namespace host {

namespace {

// Updates the fields that plug-ins read.
void ShowToPlugins(Array* array) {
  array->data = array->elements;
  array->dimensions[0] = 1;
  array->dimensions[array->upperBoundWord] = static_cast<std::int32_t>(UpperBound(array));
}

std::string Describe(const RefCounted* value) {
  return "array with upper bound " + std::to_string(UpperBound(static_cast<const Array*>(value)));
}

void DestroyContent(RefCounted* value) {
  auto* const array = static_cast<Array*>(value);
  if (array->elementType.IsReference())
    for (std::int64_t index = 0; index <= UpperBound(array); ++index) Release(ElementAt<RefCounted*>(array, index));
  std::free(array->elements);
  array->elements = array->data = nullptr;
}

}  // namespace

const RefCountedKind kArrayKind = {"array", Describe, DestroyContent};

Array* MakeArray(const Type& elementType, std::int64_t upperBound) {
  auto* const array = static_cast<Array*>(std::calloc(1, sizeof(Array)));
  if (array == nullptr) return nullptr;
  array->elementType = elementType;
  array->capacity = std::max<std::int64_t>(upperBound + 1, 4);
  array->elements = static_cast<char*>(
      std::calloc(static_cast<std::size_t>(array->capacity), static_cast<std::size_t>(SizeOf(elementType))));
  if (array->elements == nullptr) {
    std::free(array);
    return nullptr;
  }
  array->count = upperBound + 1;
  array->upperBoundWord = Host::Current().version >= 2021.0 ? 5 : 3;
  ShowToPlugins(array);
  Track(array, kArrayKind);
  return array;
}

Value GetElement(const Array* array, std::int64_t index) {
  return ReadNative(array->elementType, AddressOfElement(array, index));
}

void SetElement(Array* array, std::int64_t index, const Value& value) {
  char* const place = AddressOfElement(array, index);
  if (!value.type.IsReference()) return WriteNative(value, place);
  RefCounted* const former = ElementAt<RefCounted*>(array, index);
  Retain(value.Reference());
  WriteNative(value, place);
  Release(former);
}

void* InsertElement(Array* array, std::int64_t index) {
  const std::int64_t count = array->count;
  const std::int64_t size = SizeOf(array->elementType);
  if (index < 0 || index > count) return nullptr;
  if (count == array->capacity) {
    void* const grown = std::realloc(array->elements, static_cast<std::size_t>(2 * array->capacity * size));
    if (grown == nullptr) return nullptr;
    array->elements = static_cast<char*>(grown);
    array->capacity *= 2;
  }
  char* const place = AddressOfElement(array, index);
  std::memmove(place + size, place, static_cast<std::size_t>((count - index) * size));
  std::memset(place, 0, static_cast<std::size_t>(size));
  array->count = count + 1;
  ShowToPlugins(array);
  return place;
}

void RemoveElement(Array* array, std::int64_t index) {
  const std::int64_t size = SizeOf(array->elementType);
  RefCounted* const removed = array->elementType.IsReference() ? ElementAt<RefCounted*>(array, index) : nullptr;
  char* const place = AddressOfElement(array, index);
  std::memmove(place, place + size, static_cast<std::size_t>((array->count - index - 1) * size));
  --array->count;
  ShowToPlugins(array);
  Release(removed);
}

}  // namespace host
