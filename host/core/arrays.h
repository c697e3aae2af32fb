// The host's one-dimensional arrays.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/ref_counted.h"
#include "core/value.h"

namespace host {

struct Array : RefCounted {
  void* unused[3];
  char* data;  // read by plug-ins; the host itself uses `elements`
  // Read by plug-ins: the number of dimensions (32 bits; 64 bits since host version 2021), then the upper bound, which
  // moved in that version.
  std::array<std::int32_t, 6> dimensions;
  // Used only by the host.
  Type elementType;
  char* elements;
  std::int64_t count;
  std::int64_t capacity;
  std::size_t upperBoundWord;  // index in `dimensions`; set when the array is created
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
