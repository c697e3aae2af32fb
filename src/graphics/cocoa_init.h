// Prepares Cocoa for drawing, once per process.
#pragma once

namespace zkt {

// Sets up Objective-C exception handling by calling another library in the process, if one provides this. Only the
// first call has an effect. Does nothing without Cocoa.
void CocoaInit();

}  // namespace zkt
