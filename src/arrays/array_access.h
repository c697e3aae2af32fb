// Direct access to the elements of host arrays. The first use in a process tests whether the host's array layout is as
// expected. No element is accessed directly until the test has passed.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "arrays/element_types.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

// The outcome of a completed test is final. An interrupted test counts as not run.
enum class ArrayAccess : int { kNotVerified, kVerifying, kFailed, kProven };
inline std::atomic<ArrayAccess> gArrayAccess{ArrayAccess::kNotVerified};

// Runs the layout test, unless a test has already been completed. If another thread is running the test, waits for the
// outcome. Returns whether the test has passed. Returns false if called from within the test.
bool VerifyArrayLayout();

// Returns whether elements may be accessed directly. Runs the layout test if it has not been run.
inline bool IsArrayAccessProven() {
  const ArrayAccess state = gArrayAccess.load(std::memory_order_acquire);
  if (state == ArrayAccess::kProven) [[likely]]
    return true;
  return state != ArrayAccess::kFailed && VerifyArrayLayout();
}

// The fields of a host array that have the same offset in every host version. The layout test reads additional fields.
struct HostArray {
  void* header[3];
  std::int64_t referenceCount;
  void* notRead[3];
  void* data;
};
static_assert(offsetof(HostArray, referenceCount) == 24);
static_assert(offsetof(HostArray, data) == 56);

// Returns the address of element 0, or null if direct access is not possible. The array must not be nil.
inline void* GetArrayData(const void* array) {
  return IsArrayAccessProven() ? static_cast<const HostArray*>(array)->data : nullptr;
}

template <class Array>
ElementOf<Array>* GetArrayBasePointer(Array* array) {
  return static_cast<ElementOf<Array>*>(GetArrayData(array));
}

// Returns an element of a string array. The element may be nil. The caller owns the reference. Works even if direct
// access is not possible. Raises "OutOfBoundsException" and returns nil if the index is out of range.
REALstring REALGetArrayString(_REALarrayString* array, std::int64_t index);

// Add or release one reference to each of `count` elements. `count` must be at least 1. Nil elements are also passed to
// the host.
void LockObjects(REALstring const* items, std::int64_t count);
void LockObjects(REALobject const* items, std::int64_t count);
void LockObjects(REALdate const* items, std::int64_t count);
void LockObjects(REALdateTime const* items, std::int64_t count);
void UnlockObjects(REALstring const* items, std::int64_t count);
void UnlockObjects(REALobject const* items, std::int64_t count);
void UnlockObjects(REALdate const* items, std::int64_t count);
void UnlockObjects(REALdateTime const* items, std::int64_t count);

}  // namespace zkt
