#include "arrays/sort_delegate.h"

#include "arrays/sorting.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"

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

// What the host calls the delegate through; null after raising an exception.
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

template <class Array>
void Sort(Array* theArray, REALobject theDelegate, REALboolean descending) {
  using Element = ElementOf<Array>;
  if (theArray == nullptr) return;
  const auto invoker = reinterpret_cast<Invoker<Element>>(FindInvoker(theDelegate));
  if (invoker == nullptr) return;
  const std::span<Element> elements = ElementsToSort(theArray);
  if (elements.empty()) return;
  if (descending != 0)
    GuardedSort(elements, DSorterDelegate<Element>{theDelegate, invoker});
  else
    GuardedSort(elements, ASorterDelegate<Element>{theDelegate, invoker});
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
