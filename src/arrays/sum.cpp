#include "arrays/sum.h"

#include "arrays/kernels.h"
#include "arrays/prepared_range.h"

namespace zkt {

namespace {

// Each element is added as an `Addend`: Booleans as signed bytes, and all 64-bit integers as unsigned integers.
template <class Result, class Addend, class Array>
Result Sum(const Array* source, std::int64_t index, std::int64_t count) {
  const PreparedRange range = PrepareRange("SumArrayZKT", source, index, count);
  if (!range) return Result();
  return static_cast<Result>(
      kernels::Sum(reinterpret_cast<const Addend*>(ElementAt(source, range.elements, index)), range.count));
}

}  // namespace

// clang-format off
std::int64_t  SumArrayZKT_Boolean (_REALarrayBoolean* source, std::int64_t i, std::int64_t n) { return Sum<std::int64_t, std::int8_t>(source, i, n); }
REALcurrency  SumArrayZKT_Currency(_REALarrayCurrency* source, std::int64_t i, std::int64_t n, REALboolean) { return Sum<REALcurrency, std::uint64_t>(source, i, n); }
std::int64_t  SumArrayZKT_Int32   (_REALarrayInt32* source, std::int64_t i, std::int64_t n) { return Sum<std::int64_t, std::int32_t>(source, i, n); }
std::int64_t  SumArrayZKT_Int64   (_REALarrayInt64* source, std::int64_t i, std::int64_t n, REALboolean) { return Sum<std::int64_t, std::uint64_t>(source, i, n); }
std::uint64_t SumArrayZKT_UInt32  (_REALarrayUInt32* source, std::int64_t i, std::int64_t n, REALboolean) { return Sum<std::uint64_t, std::uint32_t>(source, i, n); }
std::uint64_t SumArrayZKT_UInt64  (_REALarrayUInt64* source, std::int64_t i, std::int64_t n, REALboolean) { return Sum<std::uint64_t, std::uint64_t>(source, i, n); }
double        SumArrayZKT_Double  (_REALarrayDouble* source, std::int64_t i, std::int64_t n) { return Sum<double, double>(source, i, n); }
double        SumArrayZKT_Single  (_REALarraySingle* source, std::int64_t i, std::int64_t n) { return Sum<double, float>(source, i, n); }
// clang-format on

}  // namespace zkt
