// Code shared by sorting in natural order and sorting with a delegate: the argument checks, and a sort that stays
// inside the array whatever the comparison returns.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <exception>
#include <functional>
#include <span>

#include "arrays/array_access.h"
#include "arrays/prepared_range.h"
#include "arrays/range.h"
#include "frame/contract/host_services.h"
#include "platform/thread_end.h"

namespace zkt {

// Returns the elements to sort, or an empty span if there are fewer than two. If direct access is not possible, raises
// an exception and returns an empty span.
template <class Array>
std::span<ElementOf<Array>> ElementsToSort(Array* theArray) {
  const auto getUpperBound = REALGetArrayUBound.Get();
  if (getUpperBound == nullptr) return {};
  const std::int64_t upperBound = getUpperBound(theArray);
  if (upperBound < 1) return {};
  ElementOf<Array>* const elements = GetArrayBasePointer(theArray);
  if (elements == nullptr) {
    RaiseNoAccess();
    return {};
  }
  return {elements, static_cast<std::size_t>(CountToEnd(0, upperBound))};
}

// A wrapper for a comparison that may be inconsistent. With an inconsistent comparison, std::sort may read outside the
// array or take quadratic time. These rules keep the sort inside the array and bound its time, with both libstdc++ and
// libc++:
// - The position before the array compares as the smallest element, and the position after the array as the largest, so
//   every scan stops at these positions.
// - If a scan both starts and stops after the array, the sort is aborted, because libc++ would continue with a negative
//   length. No element is lost, because all elements are in the array at that moment.
// - After many more comparisons than a consistent order needs, all elements compare as equal.
// - An exception from the comparison is rethrown after the sort, because one element may be outside the array during
//   the sort.
template <class Element, class GoesBefore>
class SafeOrder {
 public:
  struct State {
    const Element* before;  // the position before the first element
    const Element* end;     // the position after the last element
    std::int64_t comparisonsLeft;
    GoesBefore goesBefore;
    std::exception_ptr thrown = nullptr;  // an exception that goesBefore threw
  };

  struct OutOfRangeScan {};

  // std::sort copies its function object, so the state is stored outside the object.
  explicit SafeOrder(State* state) : state_(state) {}

  __attribute__((no_sanitize("null"))) bool operator()(const Element& a, const Element& b) const {
    if (&b == state_->end) return ComparesWithEnd(&a);
    if (&a == state_->end || &b == state_->before) return false;
    if (&a == state_->before) return true;
    if (--state_->comparisonsLeft < 0) return false;
    try {
      return state_->goesBefore(a, b);
    } catch (const ThreadEnd&) {
      throw;
    } catch (...) {
      state_->thrown = std::current_exception();
      state_->comparisonsLeft = 0;
      return false;
    }
  }

 private:
  bool ComparesWithEnd(const Element* a) const {
    if (a == state_->end || a == state_->end + 1) throw OutOfRangeScan();
    return true;
  }

  State* state_;
};

// Returns several times the 1.5 n log2 n comparisons that a consistent order may need.
inline std::int64_t ComparisonBudget(std::size_t count) {
  return 8 * static_cast<std::int64_t>(count) * (static_cast<std::int64_t>(std::bit_width(count)) + 2);
}

template <class Element, class GoesBefore>
void SafeSort(std::span<Element> elements, GoesBefore goesBefore) {
  if (elements.empty()) return;
  using Order = SafeOrder<Element, GoesBefore>;
  Element* const first = elements.data();
  Element* const end = first + elements.size();
  typename Order::State state{first - 1, end, ComparisonBudget(elements.size()), goesBefore};
  try {
    std::sort(first, end, Order(&state));
  } catch (const typename Order::OutOfRangeScan&) {
    // The elements keep the order reached so far.
  }
  if (state.thrown) std::rethrow_exception(state.thrown);
}

}  // namespace zkt
