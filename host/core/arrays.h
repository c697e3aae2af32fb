// One-dimensional arrays of the host.
#pragma once

#include <cstdint>

#include "core/counted.h"
#include "frame/plugin_interface.h"

namespace host {

// Plug-ins read the reference count, the data pointer, the dimension count and the upper bound at these places.
struct Array : Counted {
  void* unused[3];
  char* data;
  std::int64_t dimensionCount;
  std::uint32_t unused32[3];
  std::int32_t upperBound;
  // What only the host needs.
  zkt::ArrayElementType elementType;
  std::int64_t capacity;
};

using ArrayRef = Owned<Array>;

// Makes an array with zeroed elements, carrying one reference for the caller; null for an element type that is not
// known and when memory is out.
Array* MakeArray(zkt::ArrayElementType elementType, std::int64_t upperBound);

// The index of the last element, -1 for an empty array.
inline std::int64_t UpperBound(const Array* array) { return array->upperBound; }

// Inserts one zeroed element and gives its address; null when the index is out of range or memory is out.
void* InsertElement(Array* array, std::int64_t index);

// The element at an index that is in range.
template <class Element>
Element& ElementAt(const Array* array, std::int64_t index) {
  return reinterpret_cast<Element*>(array->data)[index];
}

// Releases the elements and their memory.
void DestroyContent(Array* array);

}  // namespace host
