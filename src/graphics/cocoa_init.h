// Prepares Cocoa for drawing, once per process.
#pragma once

namespace zkt {

// If another component of the process can prepare the handling of Objective-C exceptions, calls that component. Only
// the first call has an effect. Does nothing without Cocoa.
void CocoaInit();

}  // namespace zkt
