#include "arrays/copy.h"

#include <cstring>

#include "arrays/array_access.h"
#include "arrays/prepared_range.h"

namespace zkt {

namespace {

// Within one array an element can be overwritten that is copied too: it must not lose its last reference in between.
template <class Element>
void ChangeOwners(const Element* source, const Element* dest, std::int64_t count, bool isOneArray) {
  if (isOneArray) {
    LockObjects(source, count);
    UnlockObjects(dest, count);
  } else {
    UnlockObjects(dest, count);
    LockObjects(source, count);
  }
}

template <class Array>
void Copy(const Array* source, const Array* dest, std::int64_t sourceIndex, std::int64_t sourceCount,
          std::int64_t destIndex) {
  const PreparedRanges ranges =
      PrepareRanges("CopyArrayZKT", NilSource::kNothingToDo, source, dest, sourceIndex, sourceCount, destIndex);
  if (!ranges) return;
  const std::int64_t count = ranges.source.count;
  const auto* const from = ElementsOf(ranges.source, source);
  auto* const to = ElementsOf(ranges.dest, dest);
  if constexpr (kIsReference<ElementOf<Array>>) ChangeOwners(from, to, count, source == dest);
  const std::size_t size = static_cast<std::size_t>(count) * sizeof *from;
  if (source == dest)
    std::memmove(to, from, size);
  else
    std::memcpy(to, from, size);
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
