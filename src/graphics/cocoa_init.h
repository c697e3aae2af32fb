// Prepares Cocoa once per process before it draws.
#pragma once

namespace zkt {

// Lets another component of the process prepare the handling of Objective-C exceptions, if such a component is loaded.
// Only the first call does so. Does nothing without Cocoa.
void CocoaInit();

}  // namespace zkt
