// The argument checks of every operation on a range of elements, and the range that results.
#pragma once

#include <cstdint>

#include "arrays/array_access.h"
#include "arrays/element_types.h"

namespace zkt {

// The array and the number of elements of a range that starts at the caller's index. It is empty if there is nothing to
// do or an exception was raised. It is small enough to be returned in registers, because short arrays are common.
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

// How an operation on two arrays handles nil. Comparing raises "NilObjectException" for either array and logs it.
// Copying does nothing for a nil source. For a nil destination it raises the exception without logging.
enum class NilArrays { kOfEquals, kOfCopy };

// Returns `count` elements of a source array from `index` on. `family` is the operation's name in the log. Raises
// "UnsupportedOperationException" without direct access, and "OutOfBoundsException" for a range outside the array. The
// result is empty for a nil array or a count of 0.
PreparedRange PrepareRange(const char* family, const void* source, std::int64_t index, std::int64_t count);

// The same for a source and a destination.
PreparedRanges PrepareRanges(const char* family, NilArrays nilArrays, const void* source, const void* dest,
                             std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);

// Raises the "UnsupportedOperationException" of all operations without direct access.
void RaiseNoAccess();

// Returns the element at an index, with the element type of the array.
template <class Array>
ElementOf<Array>* ElementAt(const Array*, void* elements, std::int64_t index) {
  return static_cast<ElementOf<Array>*>(elements) + index;
}

}  // namespace zkt
