// What both kinds of sorting share: the checks before, and a sort that no order can make leave the array.
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

// The elements to sort; none when there are fewer than two, or when they cannot be accessed, which is raised.
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

// Sorting with an order that may contradict itself. std::sort trusts an order so far that it runs out of the array when
// it is betrayed, or takes quadratic time; these rules in front of the order keep it inside and let it end, with both
// libstdc++ and libc++:
// - The place before the array holds the smallest element and the place behind it the largest, so that every scan stops
//   there.
// - A scan that stops behind the array although it started there has gone astray: libc++ would go on with a negative
//   length. The sort is broken off, which loses nothing, because no element is out of the array at that moment.
// - After many more comparisons than a sound order needs, nothing goes before anything, which is an order too.
// - An exception of the order waits until the sort has ended: in the middle of it, an element is not in the array.
template <class Element, class GoesBefore>
class GuardedOrder {
 public:
  struct State {
    const Element* before;  // the place before the first element
    const Element* end;     // the place behind the last one
    std::int64_t comparisonsLeft;
    GoesBefore goesBefore;
    std::exception_ptr thrown = nullptr;  // by the order
  };

  struct WentAstray {};

  // The state stays where it is: std::sort copies its function object.
  explicit GuardedOrder(State* state) : state_(state) {}

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
    if (a == state_->end || a == state_->end + 1) throw WentAstray();
    return true;
  }

  State* state_;
};

// A sound order takes up to 1.5 n log2 n comparisons.
inline std::int64_t ComparisonBudget(std::size_t count) {
  return 8 * static_cast<std::int64_t>(count) * (static_cast<std::int64_t>(std::bit_width(count)) + 2);
}

template <class Element, class GoesBefore>
void GuardedSort(std::span<Element> elements, GoesBefore goesBefore) {
  if (elements.empty()) return;
  using Order = GuardedOrder<Element, GoesBefore>;
  Element* const first = elements.data();
  Element* const end = first + elements.size();
  typename Order::State state{first - 1, end, ComparisonBudget(elements.size()), goesBefore};
  try {
    std::sort(first, end, Order(&state));
  } catch (const typename Order::WentAstray&) {
    // The elements stay in the order that was reached.
  }
  if (state.thrown) std::rethrow_exception(state.thrown);
}

}  // namespace zkt
