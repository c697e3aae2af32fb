// Each RAII type here owns one host reference. The destructor releases the reference, unless Release() has transferred
// it to the caller. Borrowed references are plain pointers.
#pragma once

#include <utility>

#include "frame/contract/host_services.h"

namespace zkt {

template <class Value, auto& lock, auto& unlock>
class OwnedReference {
 public:
  OwnedReference() = default;
  // Takes ownership of the caller's reference, which may be nil.
  explicit OwnedReference(Value* owned) : value_(owned) {}
  OwnedReference(const OwnedReference&) = delete;
  OwnedReference& operator=(const OwnedReference&) = delete;
  OwnedReference(OwnedReference&& other) noexcept : value_(other.Release()) {}
  // Releases the former reference and takes over the reference of `other`.
  OwnedReference& operator=(OwnedReference&& other) noexcept {
    const OwnedReference former(std::exchange(value_, other.Release()));
    return *this;
  }
  ~OwnedReference() {
    if (value_ != nullptr) unlock(value_);
  }

  // Adds a reference to a borrowed value, which may be nil.
  static OwnedReference Share(Value* borrowed) {
    if (borrowed != nullptr) lock(borrowed);
    return OwnedReference(borrowed);
  }

  Value* Get() const { return value_; }
  explicit operator bool() const { return value_ != nullptr; }

  // Transfers the reference to the caller.
  [[nodiscard]] Value* Release() { return std::exchange(value_, nullptr); }

 private:
  Value* value_ = nullptr;
};

using OwnedString = OwnedReference<REALstringStruct, REALLockString, REALUnlockString>;
using OwnedObject = OwnedReference<REALobjectStruct, REALLockObject, REALUnlockObject>;

// Releases the reference, if any, in a variable of the instance data, and sets the variable to null.
inline void DropHeld(REALobject& held) { const OwnedObject owned(std::exchange(held, nullptr)); }
inline void DropHeld(REALstring& held) { const OwnedString owned(std::exchange(held, nullptr)); }

}  // namespace zkt
