// Finds the host's drawing context.
#pragma once

#include "frame/contract/plugin_interface.h"
#include "platform/text_system.h"

namespace zkt {

// Returns the drawing context of a Graphics object. The host keeps ownership. Returns null if there is none or the host
// cannot provide it. The function name is fixed by the host's interface.
DrawingContext getCGContextRef(REALgraphics g);

}  // namespace zkt
