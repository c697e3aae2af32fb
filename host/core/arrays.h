// One-dimensional arrays of the host.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/counted.h"
#include "core/value.h"

namespace host {

// What plug-ins read behind the data pointer, which has changed with the host's version 2021.
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

struct Array : Counted {
  void* unused[3];
  char* data;  // what plug-ins read; the host goes by `elements`
  union {
    DimensionsSince2021 since2021;
    DimensionsBefore2021 before2021;
  } dimensions;
  // What only the host needs.
  Type elementType;
  char* elements;
  std::int64_t count;
  std::int64_t capacity;
  bool isLaidOutSince2021;  // as the host was when the array was made
};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(Array, data) == 56);
static_assert(offsetof(Array, dimensions) == 64);
#pragma GCC diagnostic pop

extern const CountedKind kArrayKind;

inline Array* Value::Array() const { return static_cast<host::Array*>(Reference()); }

using ArrayRef = Owned<Array>;

// Makes an array with zeroed elements, laid out as the current host's version has it, carrying one reference for the
// caller; null when memory is out.
Array* MakeArray(const Type& elementType, std::int64_t upperBound);

// The index of the last element, -1 for an empty array.
inline std::int64_t UpperBound(const Array* array) { return array->count - 1; }

// The address of an element at an index that is in range.
inline char* AddressOfElement(const Array* array, std::int64_t index) {
  return array->elements + index * SizeOf(array->elementType);
}

// An element as a value, and the other way round; the array takes a reference of its own. The index is in range.
Value GetElement(const Array* array, std::int64_t index);
void SetElement(Array* array, std::int64_t index, const Value& value);

// Inserts one zeroed element and gives its address; null when the index is out of range or memory is out.
void* InsertElement(Array* array, std::int64_t index);

// The element at an index that is in range.
template <class Element>
Element& ElementAt(const Array* array, std::int64_t index) {
  return reinterpret_cast<Element*>(array->elements)[index];
}

}  // namespace host
