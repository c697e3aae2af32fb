// Host strings as strings of the platform.
#pragma once

#include <utility>

#include "frame/contract/plugin_interface.h"
#include "platform/core_foundation.h"

namespace zkt {

// The string as a CoreFoundation string that the caller releases; nil for a nil string and for bytes that are no text.
CFStringRef RBString2CFString(REALstring string);

// Releases a CoreFoundation reference, null included, at the end of the scope.
class fmCFReleaseLater {
 public:
  explicit fmCFReleaseLater(CFTypeRef reference) : reference_(reference) {}
  fmCFReleaseLater(const fmCFReleaseLater&) = delete;
  fmCFReleaseLater& operator=(const fmCFReleaseLater&) = delete;
  ~fmCFReleaseLater() {
    if (reference_ != nullptr) CFRelease(std::exchange(reference_, nullptr));
  }

 private:
  CFTypeRef reference_;
};

}  // namespace zkt
