#include "arrays/sort.h"

#include <iterator>
#include <type_traits>

#include "arrays/kernels.h"
#include "arrays/number_sort.h"
#include "arrays/sorting.h"
#include "dates/date_objects.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

// Plain numbers are compared by the standard library's own function objects, which it knows to be simple.
template <class Element>
using ASorter = std::less<Element>;
template <class Element>
using DSorter = std::greater<Element>;

// Strings and dates are compared by the host, whose order is not known to be sound.
std::int64_t Compare(REALstring a, REALstring b) { return REALCompareStrings(a, b); }

double SecondsOf(REALdate date) {
  const double seconds = GetTotalSeconds(date);
  Trace("GetDateTotalSeconds", seconds);
  return seconds;
}
double SecondsOf(REALdateTime dateTime) { return GetDateTimeSecondsFrom1970(dateTime); }

// Reads the first date first with every compiler: the log shows which is which by nothing else.
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

template <class Element>
void SortByValue(std::span<Element> numbers, bool descending) {
  Element* const first = numbers.data();
  Element* last = first + numbers.size();
  // NaN has no place in an order. It alone differs from itself.
  if constexpr (std::is_floating_point_v<Element>) {
    Element* const firstNaN = first + kernels::FindDifference(first, first, std::ssize(numbers));
    last = std::partition(firstNaN, last, [](Element number) { return number == number; });
  }
  if (descending)
    SortNumbers(first, last, DSorter<Element>());
  else
    SortNumbers(first, last, ASorter<Element>());
}

template <class Element>
void SortByHost(std::span<Element> elements, bool descending) {
  if (descending)
    GuardedSort(elements, HostDSorter<Element>());
  else
    GuardedSort(elements, HostASorter<Element>());
}

// Booleans are signed bytes to the order.
std::span<std::int8_t> AsSigned(std::span<std::uint8_t> bytes) {
  return {reinterpret_cast<std::int8_t*>(bytes.data()), bytes.size()};
}

template <class Array>
void Sort(Array* theArray, REALboolean descending) {
  if (theArray == nullptr) return;
  const auto elements = ElementsToSort(theArray);
  if constexpr (kIsReference<ElementOf<Array>>)
    SortByHost(elements, descending != 0);
  else if constexpr (std::is_same_v<Array, _REALarrayBoolean>)
    SortByValue(AsSigned(elements), descending != 0);
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
