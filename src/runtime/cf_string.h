// Converts host strings to strings of the platform. The names are fixed by the host's interface.
#pragma once

#include <utility>

#include "frame/contract/plugin_interface.h"
#include "platform/core_foundation.h"

namespace zkt {

// Returns a CoreFoundation string that the caller releases. Nil for a nil string and for bytes that are not valid text.
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
