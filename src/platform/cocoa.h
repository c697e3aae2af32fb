// Calls methods that another component of the process may have added to NSException.
#pragma once

namespace zkt {

// Whether this platform has Cocoa. The functions below are defined only on platforms with Cocoa.
#if __has_include(<AppKit/AppKit.h>)
inline constexpr bool kHasCocoa = true;
#else
inline constexpr bool kHasCocoa = false;
#endif

// Gets NSException's dictionary of instances and keeps it for the life of the process. Returns false if no component
// has added the method that returns the dictionary.
bool KeepExceptionInstances();

// Calls NSException's preparation method. Returns false if no component has added that method.
bool PrepareExceptions();

}  // namespace zkt
