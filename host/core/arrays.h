// The host's one-dimensional arrays.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/ref_counted.h"
#include "core/value.h"

namespace host {

// The dimension fields that follow the data pointer. Plug-ins read these fields. Their layout changed in host version
// 2021.
struct DimensionsSince2021 {
  std::int64_t count;
  std::uint32_t unused[3];
  std::int32_t upperBound;
};
static_assert(offsetof(DimensionsSince2021, upperBound) == 20);

struct DimensionsBefore2021 {
  std::int32_t count;
  std::uint32_t unused[2];
  std::int32_t upperBound;
};
static_assert(offsetof(DimensionsBefore2021, upperBound) == 12);

struct Array : RefCounted {
  void* unused[3];
  char* data;  // read by plug-ins; the host itself uses `elements`
  union {
    DimensionsSince2021 since2021;
    DimensionsBefore2021 before2021;
  } dimensions;
  // Used only by the host.
  Type elementType;
  char* elements;
  std::int64_t count;
  std::int64_t capacity;
  bool isLaidOutSince2021;  // whether the array was created with host version 2021 or later
};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(Array, data) == 56);
static_assert(offsetof(Array, dimensions) == 64);
#pragma GCC diagnostic pop

extern const RefCountedKind kArrayKind;

inline Array* Value::Array() const { return static_cast<host::Array*>(Reference()); }

using ArrayRef = Ref<Array>;

// Makes an array with zeroed elements and the layout of the current host version. The caller owns one reference.
// Returns null if memory runs out.
Array* MakeArray(const Type& elementType, std::int64_t upperBound);

// The index of the last element; -1 for an empty array.
inline std::int64_t UpperBound(const Array* array) { return array->count - 1; }

// The address of the element at a valid index.
inline char* AddressOfElement(const Array* array, std::int64_t index) {
  return array->elements + index * SizeOf(array->elementType);
}

// Reads or writes an element as a value. The index must be valid. SetElement retains a reference that it stores and
// releases the one that it replaces.
Value GetElement(const Array* array, std::int64_t index);
void SetElement(Array* array, std::int64_t index, const Value& value);

// Inserts a zeroed element and returns its address; null if the index is out of range or memory runs out.
void* InsertElement(Array* array, std::int64_t index);

// Removes the element at a valid index.
void RemoveElement(Array* array, std::int64_t index);

// The element at a valid index.
template <class Element>
Element& ElementAt(const Array* array, std::int64_t index) {
  return reinterpret_cast<Element*>(array->elements)[index];
}

}  // namespace host
