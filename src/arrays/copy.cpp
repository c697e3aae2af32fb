#include "arrays/copy.h"

#include <algorithm>
#include <cstring>

#include "arrays/array_access.h"
#include "arrays/prepared_range.h"
#include "frame/contract/host_services.h"

namespace zkt {

namespace {

// The number of references copied at a time. It is small because the old references are kept on the stack.
constexpr std::int64_t kBlockSize = 64;

// Copies `count` references (at most kBlockSize), or fewer if an array has become shorter. The old references are
// released after the new references are in place. Releasing a reference can run a destructor written in Xojo, which
// must find only live elements in the arrays.
template <class Array>
void CopyBlock(Array* source, std::int64_t sourceIndex, Array* dest, std::int64_t destIndex, std::int64_t count) {
  count = 1 + std::min({count - 1, REALGetArrayUBound(source) - sourceIndex, REALGetArrayUBound(dest) - destIndex});
  if (count < 1) return;
  const auto* const from = GetArrayBasePointer(source) + sourceIndex;
  auto* const to = GetArrayBasePointer(dest) + destIndex;
  const std::size_t size = static_cast<std::size_t>(count) * sizeof *from;
  ElementOf<Array> old[kBlockSize];
  LockObjects(from, count);
  std::memcpy(old, to, size);
  std::memmove(to, from, size);
  UnlockObjects(old, count);
}

// Destructors may change the arrays, so the addresses and bounds are read again for every block. If `source` and `dest`
// are the same array, the direction is chosen so that no element is overwritten before it is copied.
template <class Array>
void CopyReferences(Array* source, std::int64_t sourceIndex, Array* dest, std::int64_t destIndex, std::int64_t count) {
  const bool isBackwards = source == dest && sourceIndex < destIndex;
  for (std::int64_t done = 0; done < count; done += kBlockSize) {
    const std::int64_t size = std::min(kBlockSize, count - done);
    const std::int64_t offset = isBackwards ? count - done - size : done;
    CopyBlock(source, sourceIndex + offset, dest, destIndex + offset, size);
  }
}

template <class Array>
void Copy(Array* source, Array* dest, std::int64_t sourceIndex, std::int64_t sourceCount, std::int64_t destIndex) {
  const PreparedRanges ranges =
      PrepareRanges("CopyArrayZKT", NilArrays::kOfCopy, source, dest, sourceIndex, sourceCount, destIndex);
  if (!ranges) return;
  const std::int64_t count = ranges.count;
  if constexpr (kIsReference<ElementOf<Array>>) {
    CopyReferences(source, sourceIndex, dest, destIndex, count);
  } else {
    const auto* const from = ElementAt(source, ranges.source, sourceIndex);
    auto* const to = ElementAt(dest, ranges.dest, destIndex);
    const std::size_t size = static_cast<std::size_t>(count) * sizeof *from;
    if (source == dest)
      std::memmove(to, from, size);
    else
      std::memcpy(to, from, size);
  }
}

}  // namespace

// clang-format off
void CopyArrayZKT_Boolean (_REALarrayBoolean* source, _REALarrayBoolean* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Color   (_REALarrayColor* source, _REALarrayColor* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Currency(_REALarrayCurrency* source, _REALarrayCurrency* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Double  (_REALarrayDouble* source, _REALarrayDouble* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Int32   (_REALarrayInt32* source, _REALarrayInt32* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Int64   (_REALarrayInt64* source, _REALarrayInt64* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Ptr     (_REALarrayPtr* source, _REALarrayPtr* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Single  (_REALarraySingle* source, _REALarraySingle* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_String  (_REALarrayString* source, _REALarrayString* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_UInt32  (_REALarrayUInt32* source, _REALarrayUInt32* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_UInt64  (_REALarrayUInt64* source, _REALarrayUInt64* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Variant (_REALarrayVariant* source, _REALarrayVariant* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Object  (_REALarrayObject* source, _REALarrayObject* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_Date    (_REALarrayDate* source, _REALarrayDate* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
void CopyArrayZKT_DateTime(_REALarrayDateTime* source, _REALarrayDateTime* dest, std::int64_t i, std::int64_t n, std::int64_t j) { Copy(source, dest, i, n, j); }
// clang-format on

}  // namespace zkt
