// Direct access to the elements of host arrays. Whether the host lays arrays out as expected is tested once in a
// process, at the first use; until that is proven no element is touched.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "arrays/element_types.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

// The outcome of the test is final; a test that does not come to its end counts as not run.
enum class ArrayAccess : int { kNotTested, kTesting, kFailed, kProven };
inline std::atomic<ArrayAccess> gArrayAccess{ArrayAccess::kNotTested};

// Runs the test if no thread is running it, else waits for its outcome; called out of the test itself, the answer is
// no.
bool TestArrayAccess();

// Whether elements may be accessed directly.
inline bool IsArrayAccessProven() {
  const ArrayAccess state = gArrayAccess.load(std::memory_order_acquire);
  if (state == ArrayAccess::kProven) [[likely]]
    return true;
  return state != ArrayAccess::kFailed && TestArrayAccess();
}

// The host's array, as far as it is read while it is used; more of it is read by the test alone.
struct HostArray {
  void* header[3];
  std::int64_t referenceCount;
  void* notRead[3];
  void* data;
};
static_assert(offsetof(HostArray, referenceCount) == 24);
static_assert(offsetof(HostArray, data) == 56);

// The address of element 0, or null when direct access is not proven. The array is not nil.
inline void* GetArrayData(const void* array) {
  return IsArrayAccessProven() ? static_cast<const HostArray*>(array)->data : nullptr;
}

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
