#include "arrays/count_value.h"

#include <algorithm>
#include <bit>

#include "arrays/kernels.h"
#include "arrays/prepared_range.h"
#include "arrays/raw_elements.h"
#include "frame/contract/host_services.h"

namespace zkt {

namespace {

template <class Array, class Value>
std::int64_t Count(const Array* source, Value value, std::int64_t index, std::int64_t count) {
  const PreparedRange range = PrepareRange("CountValueZKT", source, index, count);
  if (!range) return 0;
  using Raw = RawOf<ElementOf<Array>>;
  return kernels::Count(AsRaw(ElementAt(source, range.elements, index)), std::bit_cast<Raw>(value), range.count);
}

// The host compares the strings. If it cannot compare strings, the count is 0.
std::int64_t CountStrings(const _REALarrayString* source, REALstring value, std::int64_t index, std::int64_t count) {
  const PreparedRange range = PrepareRange("CountValueZKT_String", source, index, count);
  if (!range) return 0;
  const REALstring* const strings = ElementAt(source, range.elements, index);
  return std::count_if(strings, strings + range.count, [=](REALstring string) {
    const auto compare = REALCompareStrings.Get();
    return compare != nullptr && compare(string, value) == 0;
  });
}

}  // namespace

// clang-format off
std::int64_t CountValueZKT_Boolean (_REALarrayBoolean* source, REALboolean value, std::int64_t i, std::int64_t n) { return Count(source, value, i, n); }
std::int64_t CountValueZKT_Currency(_REALarrayCurrency* source, REALcurrency value, std::int64_t i, std::int64_t n) { return Count(source, value, i, n); }
std::int64_t CountValueZKT_Int32   (_REALarrayInt32* source, std::int32_t value, std::int64_t i, std::int64_t n) { return Count(source, value, i, n); }
std::int64_t CountValueZKT_Int64   (_REALarrayInt64* source, std::int64_t value, std::int64_t i, std::int64_t n) { return Count(source, value, i, n); }
std::int64_t CountValueZKT_UInt32  (_REALarrayUInt32* source, std::uint32_t value, std::int64_t i, std::int64_t n) { return Count(source, value, i, n); }
std::int64_t CountValueZKT_UInt64  (_REALarrayUInt64* source, std::uint64_t value, std::int64_t i, std::int64_t n) { return Count(source, value, i, n); }
std::int64_t CountValueZKT_Double  (_REALarrayDouble* source, double value, std::int64_t i, std::int64_t n) { return Count(source, value, i, n); }
std::int64_t CountValueZKT_Single  (_REALarraySingle* source, float value, std::int64_t i, std::int64_t n) { return Count(source, value, i, n); }
std::int64_t CountValueZKT_Ptr     (_REALarrayPtr* source, void* value, std::int64_t i, std::int64_t n) { return Count(source, value, i, n); }
std::int64_t CountValueZKT_String  (_REALarrayString* source, REALstring value, std::int64_t i, std::int64_t n) { return CountStrings(source, value, i, n); }
// clang-format on

}  // namespace zkt
