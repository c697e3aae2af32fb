#include "arrays/sort.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <type_traits>

#include "arrays/counting_sort.h"
#include "arrays/kernels.h"
#include "arrays/number_sort.h"
#include "arrays/sorting.h"
#include "dates/date_objects.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

// The host compares strings and supplies the seconds by which dates are compared. The resulting order may be
// inconsistent.
std::int64_t Compare(REALstring a, REALstring b) { return REALCompareStrings(a, b); }

double SecondsOf(REALdate date) {
  const double seconds = GetTotalSeconds(date);
  Trace("GetDateTotalSeconds", seconds);
  return seconds;
}
double SecondsOf(REALdateTime dateTime) { return GetDateTimeSecondsFrom1970(dateTime); }

// The dates are read in two statements, so that the first date is always logged first. Only the order of the log lines
// shows which date is which.
template <class Date>
std::int64_t Compare(Date a, Date b) {
  const double secondsOfA = SecondsOf(a);
  const double secondsOfB = SecondsOf(b);
  return secondsOfA < secondsOfB ? -1 : secondsOfA > secondsOfB ? 1 : 0;
}

template <class Element>
struct HostASorter {
  bool operator()(Element a, Element b) const { return Compare(a, b) < 0; }
};
template <class Element>
struct HostDSorter {
  bool operator()(Element a, Element b) const { return Compare(a, b) > 0; }
};

// With fewer elements than this, a kernel call takes longer than a loop over the elements.
constexpr std::ptrdiff_t kFew = 64;

// Moves NaNs, which have no order, after the numbers, and returns the numbers.
template <class Real>
std::span<Real> NumbersBeforeNaNs(std::span<Real> reals) {
  Real* const first = reals.data();
  Real* const last = first + reals.size();
  // Only NaN differs from itself.
  Real* const firstNaN =
      std::ssize(reals) < kFew ? first : first + kernels::FindDifference(first, first, std::ssize(reals));
  return {first, std::partition(firstNaN, last, [](Real real) { return real == real; })};
}

// Sorts two elements by swapping their bits without a branch. NaNs go after numbers.
template <class Bits, class Element>
void SortPair(std::span<Element> pair, bool descending) {
  const Element first = pair[0];
  const Element second = pair[1];
  const bool isInOrder = descending ? first >= second : first <= second;  // false if either is NaN
  const bool isReversed = !isInOrder & (second == second);
  Bits bits[2];
  std::memcpy(bits, pair.data(), sizeof bits);
  const Bits exchanged = static_cast<Bits>((bits[0] ^ bits[1]) & static_cast<Bits>(-static_cast<int>(isReversed)));
  bits[0] ^= exchanged;
  bits[1] ^= exchanged;
  std::memcpy(pair.data(), bits, sizeof bits);
}

std::int64_t CountBooleans(std::span<const std::uint8_t> booleans, std::uint8_t value) {
  if (std::ssize(booleans) >= kFew) return kernels::Count(booleans.data(), value, std::ssize(booleans));
  std::uint8_t count = 0;
  for (const std::uint8_t boolean : booleans) count = static_cast<std::uint8_t>(count + (boolean == value ? 1 : 0));
  return count;
}

// Booleans are nearly always 0 or 1, so counting the zeros and ones is usually enough. If there are other bytes, all
// bytes are sorted by value.
void SortByValue(std::span<std::uint8_t> booleans, bool descending) {
  const std::span<std::int8_t> bytes(reinterpret_cast<std::int8_t*>(booleans.data()), booleans.size());
  if (bytes.size() == 2) return SortPair<std::uint8_t>(bytes, descending);
  const std::int64_t ones = CountBooleans(booleans, 1);
  const std::int64_t zeros = CountBooleans(booleans, 0);
  if (zeros + ones == std::ssize(booleans)) {
    const std::uint8_t first = descending ? 1 : 0;
    std::uint8_t* const rest = std::fill_n(booleans.data(), descending ? ones : zeros, first);
    std::fill_n(rest, descending ? zeros : ones, static_cast<std::uint8_t>(1 - first));
    return;
  }
  SortBytes(bytes, descending);
}

void SortByValue(std::span<void*> addresses, bool descending) {
  SortNumbers<std::uint64_t>({reinterpret_cast<std::uint64_t*>(addresses.data()), addresses.size()}, descending);
}

template <class Number>
void SortByValue(std::span<Number> numbers, bool descending) {
  if constexpr (std::is_floating_point_v<Number>) {
    if (numbers.size() == 2) return SortPair<number_sort::KeyOf<Number>>(numbers, descending);
    numbers = NumbersBeforeNaNs(numbers);
  }
  SortNumbers(numbers, descending);
}

template <class Element>
void SortByHost(std::span<Element> elements, bool descending) {
  if (descending)
    SafeSort(elements, HostDSorter<Element>());
  else
    SafeSort(elements, HostASorter<Element>());
}

template <class Array>
void Sort(Array* theArray, REALboolean descending) {
  if (theArray == nullptr) return;
  const auto elements = ElementsToSort(theArray);
  if constexpr (kIsReference<ElementOf<Array>>)
    SortByHost(elements, descending != 0);
  else
    SortByValue(elements, descending != 0);
}

}  // namespace

// clang-format off
void SortArrayZKT_Boolean (_REALarrayBoolean* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_Color   (_REALarrayColor* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_Currency(_REALarrayCurrency* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_Date    (_REALarrayDate* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_DateTime(_REALarrayDateTime* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_Double  (_REALarrayDouble* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_Int32   (_REALarrayInt32* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_Int64   (_REALarrayInt64* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_Ptr     (_REALarrayPtr* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_Single  (_REALarraySingle* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_String  (_REALarrayString* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_UInt32  (_REALarrayUInt32* theArray, REALboolean descending) { Sort(theArray, descending); }
void SortArrayZKT_UInt64  (_REALarrayUInt64* theArray, REALboolean descending) { Sort(theArray, descending); }
// clang-format on

}  // namespace zkt
