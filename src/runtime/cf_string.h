// Converts host strings to CoreFoundation strings. The names are fixed by the host's interface.
#pragma once

#include <utility>

#include "frame/contract/plugin_interface.h"
#include "platform/core_foundation.h"

namespace zkt {

// Returns a CoreFoundation string, which the caller must release. Returns null if the host string is nil or its bytes
// are not valid in its encoding.
CFStringRef RBString2CFString(REALstring string);

// Releases a CoreFoundation reference, which may be null, at the end of the scope.
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
