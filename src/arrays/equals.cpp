#include "arrays/equals.h"

#include "arrays/kernels.h"
#include "arrays/prepared_range.h"
#include "arrays/raw_elements.h"
#include "frame/contract/host_services.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

template <class Array>
struct EqualsFamily {
  static constexpr const char* kName = "EqualsArrayZKT";
  static constexpr const char* kDifferent = "different values at";

  template <class Element>
  static std::int64_t FindDifference(const Element* a, const Element* b, std::int64_t count) {
    return kernels::FindDifference(AsRaw(a), AsRaw(b), count);
  }
};

template <>
struct EqualsFamily<_REALarrayString> {
  static constexpr const char* kName = "EqualsArrayZKT_strings";
  static constexpr const char* kDifferent = "different strings at";

  // If the host cannot compare strings, two strings are equal only if they are the same host string.
  static bool AreEqual(REALstring a, REALstring b) {
    if (a == b) return true;
    const auto compare = REALCompareStrings.Get();
    return compare != nullptr && compare(a, b) == 0;
  }

  static std::int64_t FindDifference(const REALstring* a, const REALstring* b, std::int64_t count) {
    std::int64_t i = 0;
    while (i < count && AreEqual(a[i], b[i])) ++i;
    return i;
  }
};

// Converts an element to a type that Trace accepts: an integer, a double or an address.
template <class Element>
auto ForTrace(Element element) {
  if constexpr (std::is_pointer_v<Element>)
    return static_cast<const void*>(element);
  else if constexpr (std::is_floating_point_v<Element>)
    return static_cast<double>(element);
  else if constexpr (sizeof(Element) == 1)
    return static_cast<int>(element);
  else
    return element;
}

template <class Array>
REALboolean Equals(const Array* array1, const Array* array2, std::int64_t offset1, std::int64_t count,
                   std::int64_t offset2) {
  using Family = EqualsFamily<Array>;
  const PreparedRanges ranges =
      PrepareRanges(Family::kName, NilArrays::kOfEquals, array1, array2, offset1, count, offset2);
  if (!ranges) return false;
  const auto* const a = ElementAt(array1, ranges.source, offset1);
  const auto* const b = ElementAt(array2, ranges.dest, offset2);
  const std::int64_t difference = Family::FindDifference(a, b, ranges.count);
  if (difference == ranges.count) {
    Trace("all values the same.");
    return true;
  }
  Trace(Family::kDifferent, difference);
  Trace("values", ForTrace(a[difference]), ForTrace(b[difference]));
  return false;
}

}  // namespace

// clang-format off
REALboolean EqualsArrayZKT_Boolean (_REALarrayBoolean* a, _REALarrayBoolean* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_Color   (_REALarrayColor* a, _REALarrayColor* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_Currency(_REALarrayCurrency* a, _REALarrayCurrency* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_Double  (_REALarrayDouble* a, _REALarrayDouble* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_Int32   (_REALarrayInt32* a, _REALarrayInt32* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_Int64   (_REALarrayInt64* a, _REALarrayInt64* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_Ptr     (_REALarrayPtr* a, _REALarrayPtr* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_Single  (_REALarraySingle* a, _REALarraySingle* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_String  (_REALarrayString* a, _REALarrayString* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_UInt32  (_REALarrayUInt32* a, _REALarrayUInt32* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
REALboolean EqualsArrayZKT_UInt64  (_REALarrayUInt64* a, _REALarrayUInt64* b, std::int64_t i, std::int64_t n, std::int64_t j) { return Equals(a, b, i, n, j); }
// clang-format on

}  // namespace zkt
