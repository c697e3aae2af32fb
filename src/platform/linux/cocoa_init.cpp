#include "platform/cocoa_init.h"

namespace zkt {

void CocoaInit() {}

}  // namespace zkt
