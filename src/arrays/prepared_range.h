// The checks that every operation on a range of elements begins with, and what they leave to work on.
#pragma once

#include <cstdint>

#include "arrays/array_access.h"
#include "arrays/element_types.h"

namespace zkt {

// Elements to work on; none when the operation has nothing to do or an exception was raised.
struct PreparedRange {
  void* elements = nullptr;  // element 0 of the array
  std::int64_t index = 0;
  std::int64_t count = 0;

  explicit operator bool() const { return elements != nullptr; }
};

struct PreparedRanges {
  PreparedRange source;
  PreparedRange dest;  // as many elements as in the source

  explicit operator bool() const { return static_cast<bool>(source); }
};

// What nil arrays mean to an operation on two arrays. Comparing raises "NilObjectException" for either, and says so in
// the log. Copying has nothing to do without a source, and raises without a destination, silently in the log.
enum class NilArrays { kOfEquals, kOfCopy };

// The elements `index` … of a source array; `family` is the operation's name in the log. Raises
// "UnsupportedOperationException" without direct access, "OutOfBoundsException" for a range that the array does not
// have. A nil array and a count of 0 are nothing to do.
PreparedRange PrepareRange(const char* family, const void* source, std::int64_t index, std::int64_t count);

// The same for a source and a destination.
PreparedRanges PrepareRanges(const char* family, NilArrays nilArrays, const void* source, const void* dest,
                             std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex);

// Raises "UnsupportedOperationException", which every operation does without direct access.
void RaiseNoAccess();

// The elements of a range, typed by their array.
template <class Array>
ElementOf<Array>* ElementsOf(const PreparedRange& range, const Array*) {
  return static_cast<ElementOf<Array>*>(range.elements) + range.index;
}

}  // namespace zkt
