// Between the first and the last call to the delegate, the sort owns nothing except memory that is freed even after a
// jump out of the delegate. It does not write to the array during this time, unless there is not enough memory for a
// copy.
#include "arrays/sort_delegate.h"

#include <cstring>

#include "arrays/content_hash.h"
#include "arrays/merge_sort.h"
#include "arrays/sorting.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"
#include "runtime/jump_safe_memory.h"

namespace zkt {

namespace {

template <class Element>
using Invoker = std::int64_t (*)(REALobject theDelegate, Element a, Element b);

template <class Element>
struct ASorterDelegate {
  REALobject theDelegate;
  Invoker<Element> invoker;

  bool operator()(Element a, Element b) const { return invoker(theDelegate, a, b) < 0; }
};

template <class Element>
struct DSorterDelegate {
  REALobject theDelegate;
  Invoker<Element> invoker;

  bool operator()(Element a, Element b) const { return invoker(theDelegate, a, b) > 0; }
};

// Returns the host's function that calls the delegate. If there is none, raises an exception and returns null.
DelegateInvoker FindInvoker(REALobject theDelegate) {
  if (theDelegate == nullptr) {
    Trace("delegate", "is nil");
    RaiseException("NilObjectException", "Delegate is nil");
    return nullptr;
  }
  const DelegateInvoker invoker = REALGetDelegateInvoker(theDelegate, 0);
  if (invoker == nullptr) {
    Trace("d", "is nil");
    RaiseException("NilObjectException", "Delegate is bad?");
  }
  return invoker;
}

// Returns the size in bytes of `count` elements, or SIZE_MAX if the size overflows.
template <class Element>
std::size_t SizeOf(std::size_t count) {
  return count <= SIZE_MAX / sizeof(Element) ? count * sizeof(Element) : SIZE_MAX;
}

// Returns whether the array still has these elements at the same address. If not, writing the elements back in a
// different order could duplicate or lose a reference.
template <class Array>
bool IsUnchanged(Array* theArray, std::span<const ElementOf<Array>> elements, std::uint64_t hash) {
  return REALGetArrayUBound(theArray) + 1 == std::ssize(elements) && GetArrayBasePointer(theArray) == elements.data() &&
         HashOf(elements.data(), elements.size_bytes()) == hash;
}

// Sorts a copy, then writes it back if the delegate has not changed the array. If there is not enough memory for a
// copy, sorts the array itself.
template <class Array, class GoesBefore>
void SortCopy(Array* theArray, std::span<ElementOf<Array>> elements, GoesBefore goesBefore) {
  using Element = ElementOf<Array>;
  using Sorting = MergeSort<Element, GoesBefore>;
  const std::size_t count = elements.size();
  const JumpSafeMemory memory(SizeOf<Element>(count + Sorting::SpareFor(count)));
  auto* const copy = static_cast<Element*>(memory.Get());
  if (copy == nullptr) return SafeSort(elements, goesBefore);
  std::memcpy(copy, elements.data(), elements.size_bytes());
  const std::uint64_t hash = HashOf(copy, elements.size_bytes());
  Sorting({copy, count}, copy + count, goesBefore).Run();
  if (IsUnchanged<Array>(theArray, elements, hash)) std::memcpy(elements.data(), copy, elements.size_bytes());
}

template <class Array>
void Sort(Array* theArray, REALobject theDelegate, REALboolean descending) {
  using Element = ElementOf<Array>;
  if (theArray == nullptr) return;
  const auto invoker = reinterpret_cast<Invoker<Element>>(FindInvoker(theDelegate));
  if (invoker == nullptr) return;
  const std::span<Element> elements = ElementsToSort(theArray);
  if (elements.empty()) return;
  if (descending != 0)
    SortCopy(theArray, elements, DSorterDelegate<Element>{theDelegate, invoker});
  else
    SortCopy(theArray, elements, ASorterDelegate<Element>{theDelegate, invoker});
}

}  // namespace

// clang-format off
void SortArrayZKT_BooleanDel (_REALarrayBoolean* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_ColorDel   (_REALarrayColor* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_CurrencyDel(_REALarrayCurrency* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_DoubleDel  (_REALarrayDouble* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_Int32Del   (_REALarrayInt32* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_Int64Del   (_REALarrayInt64* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_ObjectDel  (_REALarrayVariant* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_PtrDel     (_REALarrayPtr* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_SingleDel  (_REALarraySingle* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_StringDel  (_REALarrayString* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_UInt32Del  (_REALarrayUInt32* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_UInt64Del  (_REALarrayUInt64* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
void SortArrayZKT_DateTimeDel(_REALarrayDateTime* theArray, REALobject theDelegate, REALboolean descending) { Sort(theArray, theDelegate, descending); }
// clang-format on

}  // namespace zkt
