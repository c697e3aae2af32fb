// What has to happen once in a process before Cocoa draws.
#pragma once

namespace zkt {

// Lets another component of the process, if one is loaded that can, prepare the handling of Objective-C exceptions.
// Does so at its first call only; without Cocoa there is nothing to do.
void CocoaInit();

}  // namespace zkt
