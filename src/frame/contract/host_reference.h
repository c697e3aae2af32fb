// Owners of one host reference each. The destructor drops it; Release() is the only way to hand it on.
// Borrowed references stay plain pointers.
#pragma once

#include <utility>

#include "frame/contract/host_services.h"

namespace zkt {

template <class Value, auto& lock, auto& unlock>
class OwnedReference {
 public:
  OwnedReference() = default;
  // Takes over a reference that the caller owns; nil is allowed.
  explicit OwnedReference(Value* owned) : value_(owned) {}
  OwnedReference(const OwnedReference&) = delete;
  OwnedReference& operator=(const OwnedReference&) = delete;
  OwnedReference(OwnedReference&& other) noexcept : value_(other.Release()) {}
  // What was owned before is released.
  OwnedReference& operator=(OwnedReference&& other) noexcept {
    const OwnedReference former(std::exchange(value_, other.Release()));
    return *this;
  }
  ~OwnedReference() {
    if (value_ != nullptr) unlock(value_);
  }

  // Takes a reference to a borrowed value, nil included.
  static OwnedReference Share(Value* borrowed) {
    if (borrowed != nullptr) lock(borrowed);
    return OwnedReference(borrowed);
  }

  Value* Get() const { return value_; }
  explicit operator bool() const { return value_ != nullptr; }

  // Gives the reference to the caller.
  [[nodiscard]] Value* Release() { return std::exchange(value_, nullptr); }

 private:
  Value* value_ = nullptr;
};

using OwnedString = OwnedReference<REALstringStruct, REALLockString, REALUnlockString>;
using OwnedObject = OwnedReference<REALobjectStruct, REALLockObject, REALUnlockObject>;

// Drops the reference that a variable holds, if it holds one, and empties the variable. For references that live in
// instance data.
inline void DropHeld(REALobject& held) { const OwnedObject owned(std::exchange(held, nullptr)); }
inline void DropHeld(REALstring& held) { const OwnedString owned(std::exchange(held, nullptr)); }

}  // namespace zkt
