// What another component of the process may have added to Cocoa's exceptions.
#pragma once

namespace zkt {

// Whether the process draws with Cocoa; without it the functions below do not exist.
#if __has_include(<AppKit/AppKit.h>)
inline constexpr bool kHasCocoa = true;
#else
inline constexpr bool kHasCocoa = false;
#endif

// Asks NSException for its dictionary of instances, and keeps that for the life of the process. False if nobody has
// added the method for it.
bool KeepExceptionInstances();

// Lets NSException prepare itself. False if nobody has added the method for it.
bool PrepareExceptions();

}  // namespace zkt
