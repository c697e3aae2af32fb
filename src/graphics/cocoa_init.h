// Prepares Cocoa for drawing, once per process.
#pragma once

namespace zkt {

// Sets up Objective-C exception handling if another component of the process provides the methods for it. Only the
// first call has an effect. Does nothing without Cocoa.
void CocoaInit();

}  // namespace zkt
