// Direct access to the elements of host arrays. Whether the host lays arrays out as expected is tested once in a
// process, at the first use; until that is proven no element is touched.
#pragma once

#include <atomic>
#include <cstdint>

#include "arrays/element_types.h"
#include "frame/plugin_interface.h"

namespace zkt {

// The outcome of the test. It is final.
enum class ArrayAccess : int { kNotTested, kTesting, kFailed, kProven };
inline std::atomic<ArrayAccess> gArrayAccess{ArrayAccess::kNotTested};

// Whether elements may be accessed directly; runs the test if it has not been run. While another thread runs it, this
// one waits for the outcome; called out of the test itself, the answer is no.
bool IsArrayAccessProven();

// The address of element 0, or null when direct access is not proven. The array is not nil.
void* GetArrayData(const void* array);

template <class Array>
ElementOf<Array>* GetArrayBasePointer(Array* array) {
  return static_cast<ElementOf<Array>*>(GetArrayData(array));
}

// One element of a string array, with a reference for the caller; may be nil. Works without direct access too.
// Raises "OutOfBoundsException" for an index beyond the array, and gives nil then.
REALstring REALGetArrayString(_REALarrayString* array, std::int64_t index);

// Takes or drops one reference on each of `count` elements, of which there is at least one; nil elements are passed on
// to the host as they are.
void LockObjects(REALstring const* items, std::int64_t count);
void LockObjects(REALobject const* items, std::int64_t count);
void LockObjects(REALdate const* items, std::int64_t count);
void LockObjects(REALdateTime const* items, std::int64_t count);
void UnlockObjects(REALstring const* items, std::int64_t count);
void UnlockObjects(REALobject const* items, std::int64_t count);
void UnlockObjects(REALdate const* items, std::int64_t count);
void UnlockObjects(REALdateTime const* items, std::int64_t count);

}  // namespace zkt
