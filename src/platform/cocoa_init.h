// What has to happen once in a process before AppKit draws.
#pragma once

namespace zkt {

// Lets another component of the process prepare its handling of Objective-C exceptions, if one is loaded that does.
// Runs once; on Linux there is nothing to prepare.
void CocoaInit();

}  // namespace zkt
