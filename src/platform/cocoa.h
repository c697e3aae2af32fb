// Methods that another component of the process may have added to Cocoa's exceptions.
#pragma once

namespace zkt {

// Whether the process draws with Cocoa. Without Cocoa, the functions below do not exist.
#if __has_include(<AppKit/AppKit.h>)
inline constexpr bool kHasCocoa = true;
#else
inline constexpr bool kHasCocoa = false;
#endif

// Asks NSException for its dictionary of instances and keeps it for the life of the process. Returns false if no
// component has added the method.
bool KeepExceptionInstances();

// Lets NSException prepare itself. Returns false if no component has added the method.
bool PrepareExceptions();

}  // namespace zkt
