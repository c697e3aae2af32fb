// Checks the arguments of every operation on a range of elements, and returns the resulting range.
#pragma once

#include <cstdint>

#include "arrays/array_access.h"
#include "arrays/element_types.h"

namespace zkt {

// A range of elements that starts at the caller's index. It is empty if there is nothing to do or an exception was
// raised. The struct is small enough to be returned in registers, which saves time for short arrays.
struct PreparedRange {
  void* elements = nullptr;  // element 0 of the array
  std::int64_t count = 0;

  explicit operator bool() const { return elements != nullptr; }
};

struct PreparedRanges {
  void* source = nullptr;  // element 0 of each array
  void* dest = nullptr;
  std::int64_t count = 0;

  explicit operator bool() const { return source != nullptr; }
};

// How an operation on two arrays handles nil arrays. A comparison logs which array is nil and raises
// "NilObjectException". A copy does nothing if the source is nil, and raises the exception without logging if the
// destination is nil.
enum class NilArrays { kOfEquals, kOfCopy };

// Returns the range of `count` elements that starts at `index` in a source array. `family` is the operation's name in
// the log. Raises "UnsupportedOperationException" if direct access is not possible, and "OutOfBoundsException" if the
// range exceeds the array. The result is empty if the array is nil or there are no elements to process.
PreparedRange PrepareRange(const char* family, const void* source, std::int64_t index, std::int64_t count);

// Does the same for a source array and a destination array.
PreparedRanges PrepareRanges(const char* family, NilArrays nilArrays, const void* source, const void* dest,
                             std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);

// Raises the "UnsupportedOperationException" that all operations raise if direct access is not possible.
void RaiseNoAccess();

// Returns a typed pointer to the element at an index. `elements` is the address of element 0.
template <class Array>
ElementOf<Array>* ElementAt(const Array*, void* elements, std::int64_t index) {
  return static_cast<ElementOf<Array>*>(elements) + index;
}

}  // namespace zkt
